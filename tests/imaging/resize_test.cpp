// Resizing: its arithmetic, and the order of its calls over the fake imaging library.
#include "imaging/resize.h"

#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

using Resizing = tests::WithFake;

TEST(ResizedWidth, FollowsTheProportions) {
    EXPECT_EQ(ResizedWidth(3000, 2000, 100), 150);
    EXPECT_EQ(ResizedWidth(1000, 1000, 2000), 2000);
}

TEST(ResizedWidth, TiesGoToTheEvenOne) {
    EXPECT_EQ(ResizedWidth(5, 2, 1), 2); // 2.5
    EXPECT_EQ(ResizedWidth(5, 2, 3), 8); // 7.5
}

TEST(ResizedWidth, ProportionsAreAFloat) {
    // 16777217 / 1 is no 32-bit float; its neighbour is.
    EXPECT_EQ(ResizedWidth(16777217, 1, 1), 16777216);
    // 2 / 3 rounds up to 0.66666669: times 30000000 that is 20000000.9, where the exact fraction gives 20000000.
    EXPECT_EQ(ResizedWidth(2, 3, 30000000), 20000001);
}

TEST_F(Resizing, DrawsTheWholeSourceOverTheWholeOfANewBitmap) {
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetImageHeight 11", "GdipGetImageWidth 11",
                     "GdipGetImagePixelFormat 11", "GdipCreateBitmapFromScan0 0 15 10 0 2.49857e+06",
                     "GdipGetImageGraphicsContext 33", "GdipGetInterpolationMode 55 2", "GdipGetSmoothingMode 55 2",
                     "GdipDrawImageRectRectI 55 11 0 0 15 10 0 0 30 20 2", "GdipGetPropertySize 11",
                     "GdipGetAllPropertyItems 11", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
                     "GdipSaveImageToFile 33", "GdipDisposeImage 33", "GdipDeleteGraphics 55", "GdipDisposeImage 11",
                     "GdiplusShutdown 1"}));
}

TEST_F(Resizing, BlankNamesAndUnknownExtensionsStartNoSession) {
    EXPECT_EQ(ResizeImage("", "b.jpg", 10), -1);
    EXPECT_EQ(ResizeImage("  ", "b.jpg", 10), -1);
    EXPECT_EQ(ResizeImage("a.png", " ", 10), -1);
    EXPECT_EQ(ResizeImage("a.png", "b.sgl", 10), -1);
    EXPECT_EQ(ResizeImage("a.png", "b", 10), -1);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Resizing, SourceThatDoesNotLoadLeavesTheSessionOpen) {
    fake_.Answer("GdipLoadImageFromFile", 10);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), -1);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(Resizing, SourceWithoutSizeLeavesSessionAndImage) {
    fake_.ReportSize(0, 20);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), -1);
    fake_.ReportSize(30, 0);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), -1);
    EXPECT_EQ(fake_.Calls().back(), "GdipGetImageWidth 12");
}

TEST_F(Resizing, RefusedSessionGoesOnAndItsNumberToTheShutdown) {
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), 0);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown -16001");
}

TEST_F(Resizing, HeightZeroStaysZero) {
    fake_.Answer("GdipCreateBitmapFromScan0", 2);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 0), 0);
    EXPECT_EQ(fake_.CountOf("GdipCreateBitmapFromScan0 0 0 0 0 2.49857e+06"), 1u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Resizing, NoStatusBehindTheSizeIsLookedAt) {
    for (const char* name :
         {"GdipGetImagePixelFormat", "GdipCreateBitmapFromScan0", "GdipGetImageGraphicsContext",
          "GdipDrawImageRectRectI", "GdipGetAllPropertyItems", "GdipGetImageEncoders", "GdipSaveImageToFile"}) {
        fake_.Answer(name, 1);
        EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), 0) << name;
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1") << name;
        fake_.Answer(name, 0);
    }
}

TEST_F(Resizing, SourceThatCannotBeDecodedIsNotWrittenAndLeavesTheSessionOpen) {
    fake_.Answer("GdipDrawImageRectRectI", 3);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), -1);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 33"), 0u);
    EXPECT_EQ(fake_.Calls().back(), "GdipDisposeImage 11");
}

TEST_F(Resizing, WithoutASurfaceTheBlankPictureIsWritten) {
    fake_.Answer("GdipGetImageGraphicsContext", 3);
    fake_.Answer("GdipDrawImageRectRectI", 3);
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), 0);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 33"), 1u);
}

TEST_F(Resizing, ExtensionWithoutAnEncoderIsSavedUnderNoId) {
    EXPECT_EQ(ResizeImage("a.png", "b.ico", 10), 0);
    EXPECT_NE(fake_.LastParameters().find("encoder 00000000"), std::string::npos);
}

TEST_F(Resizing, PropertiesGoAlong) {
    fake_.GiveProperties({{256, 3, std::string("\x40\1", 2)}, {306, 2, std::string("now\0", 4)}});
    EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), 0);
    EXPECT_EQ(fake_.PropertiesSet(), (std::vector<std::string>{"256 3 2 @\1", "306 2 4 now"}));
}

TEST(ResizeUnloaded, IsRefused) { EXPECT_EQ(ResizeImage("a.png", "b.jpg", 10), -1); }

} // namespace
