// Cropping, turning and displaying: the order of their calls over the fake imaging library, and the table of turns.
#include "imaging/crop.h"
#include "imaging/display.h"
#include "imaging/rotate.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

using Cropping = tests::WithFake;
using Rotating = tests::WithFake;
using Display = tests::WithFake;

TEST_F(Cropping, ClonesTheAreaInTheSourcesFormat) {
    EXPECT_EQ(CropImage("a.png", "b.jpg", 1, 2, 30, 20), 0);
    EXPECT_EQ(
        fake_.Calls(),
        (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetImageHeight 11", "GdipGetImageWidth 11",
               "GdipGetImagePixelFormat 11", "GdipCloneBitmapAreaI 11 1 2 30 20 2.49857e+06", "GdipGetPropertySize 11",
               "GdipGetAllPropertyItems 11", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
               "GdipSaveImageToFile 44", "GdipDisposeImage 44", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Cropping, BadArgumentsStartNoSession) {
    EXPECT_EQ(CropImage(" ", "b.jpg", 0, 0, 5, 5), -1);
    EXPECT_EQ(CropImage("a.png", "", 0, 0, 5, 5), -1);
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 0, 5), -1);
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, -5), -1);
    EXPECT_EQ(CropImage("a.png", "b.txt", 0, 0, 5, 5), -1);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Cropping, SourceThatDoesNotLoadEndsTheSession) {
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, 5), -1);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdiplusShutdown 1"}));
}

TEST_F(Cropping, RectangleLargerThanTheImageIsRefused) {
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 31, 20), -1);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetImageHeight 11", "GdipGetImageWidth 11",
                     "GdipDisposeImage 0", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 30, 21), -1);
}

TEST_F(Cropping, PlaceIsLeftToTheImagingLibrary) {
    fake_.Answer("GdipCloneBitmapAreaI", 3);
    EXPECT_EQ(CropImage("a.png", "b.jpg", 10, 0, 30, 20), 3);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 44"), 0u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Cropping, FormatThatCannotBeReadIsPassedUp) {
    fake_.Answer("GdipGetImagePixelFormat", 2);
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, 5), 2);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Cropping, FailingSaveIsNotSeen) {
    for (const std::int32_t status : {1, 3}) {
        fake_.Answer("GdipSaveImageToFile", status);
        EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, 5), 0) << status;
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1") << status;
    }
}

TEST_F(Cropping, SourceThatCannotBeDecodedWhileItIsSavedIsRefused) {
    fake_.Answer("GdipSaveImageToFile", 3);
    fake_.Answer("GdipGetImageThumbnail", 3); // what the part is asked with
    EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, 5), -1);
    EXPECT_EQ(fake_.CountOf("GdipGetImageThumbnail 44"), 1u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST(CropUnloaded, IsRefused) { EXPECT_EQ(CropImage("a.png", "b.jpg", 0, 0, 5, 5), -1); }

TEST(RotateFlipCode, WholeTable) {
    const char* const words[] = {"", "H", "V", "HV", "VH"};
    const std::int32_t codes[4][5] = {{0, 4, 6, 2, 2}, {1, 5, 7, 3, 3}, {2, 6, 4, 0, 0}, {3, 7, 5, 1, 1}};
    for (std::int32_t turn = 0; turn < 4; ++turn) {
        for (int word = 0; word < 5; ++word) {
            EXPECT_EQ(RotateFlipCode(turn * 90, words[word]), codes[turn][word]) << turn * 90 << words[word];
        }
    }
}

TEST(RotateFlipCode, LetterCaseDoesNotMatter) {
    EXPECT_EQ(RotateFlipCode(90, "vh"), 3);
    EXPECT_EQ(RotateFlipCode(90, "hV"), 3);
}

TEST(RotateFlipCode, OtherWordsTurnNothing) {
    for (const char* word : {"X", "HH", "HVH", " ", " H"}) {
        EXPECT_EQ(RotateFlipCode(90, word), 0) << word;
    }
}

TEST(RotateFlipCode, OtherAnglesAreFreeWhateverTheWord) {
    for (const std::int32_t angle : {45, -90, 360, 1, 450}) {
        EXPECT_EQ(RotateFlipCode(angle, ""), -1);
        EXPECT_EQ(RotateFlipCode(angle, "H"), -1);
        EXPECT_EQ(RotateFlipCode(angle, "X"), -1);
    }
}

TEST_F(Rotating, WorksOnAClone) {
    EXPECT_EQ(RotateImage("a.png", "b.jpg", 90, "h"), 0);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipCloneImage 11",
                                    "GdipImageRotateFlip 44 5", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
                                    "GdipGetPropertySize 11", "GdipGetAllPropertyItems 11", "GdipSaveImageToFile 44",
                                    "GdipDisposeImage 11", "GdipDisposeImage 44", "GdiplusShutdown 1"}));
}

TEST_F(Rotating, FreeAngleIsHandedOnAsMinusOne) {
    EXPECT_EQ(RotateImage("a.png", "b.jpg", 45, ""), 0);
    EXPECT_EQ(fake_.CountOf("GdipImageRotateFlip 44 -1"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 44"), 1u);
}

TEST_F(Rotating, BadNamesStartNoSession) {
    EXPECT_EQ(RotateImage("", "b.jpg", 90, ""), -1);
    EXPECT_EQ(RotateImage("a.png", "  ", 90, ""), -1);
    EXPECT_EQ(RotateImage("a.png", "b.xyz", 90, ""), -1);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Rotating, SourceThatDoesNotLoadGoesThroughAllSteps) {
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(RotateImage("a.png", "b.jpg", 90, ""), 0);
    EXPECT_EQ(fake_.CountOf("GdipCloneImage 0"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 0"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDisposeImage 0"), 0u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Rotating, NoStatusIsLookedAt) {
    for (const char* name : {"GdipCloneImage", "GdipImageRotateFlip", "GdipSaveImageToFile"}) {
        fake_.Answer(name, 1);
        EXPECT_EQ(RotateImage("a.png", "b.jpg", 90, ""), 0) << name;
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1") << name;
        fake_.Answer(name, 0);
    }
}

TEST(RotateUnloaded, DoesNothing) { EXPECT_EQ(RotateImage("a.png", "b.jpg", 90, ""), 0); }

TEST_F(Display, StartsNoSessionAndDrawsAtNaturalSize) {
    EXPECT_EQ(DisplayImage("a.png", reinterpret_cast<void*>(99), 1.5f, 2), 0);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdipCreateFromHDC 99", "GdipLoadImageFromFile", "GdipDrawImage 55 11 1.5 2",
                                    "GdipDisposeImage 11", "GdipDeleteGraphics 55"}));
}

TEST_F(Display, ImageFileIsDrawnPixelForPixelInASessionOfItsOwn) {
    EXPECT_EQ(DrawImageFile("a.png", reinterpret_cast<void*>(99)), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetImageWidth 11", "GdipGetImageHeight 11",
                     "GdipCreateFromHDC 99", "GdipDrawImageRectI 55 11 0 0 30 20", "GdipDeleteGraphics 55",
                     "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Display, FileThatCannotBeLoadedOrDrawnGivesItsStatusAndLeavesNothing) {
    fake_.Answer("GdipCreateFromHDC", 2);
    EXPECT_EQ(DrawImageFile("a.png", nullptr), 2);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
    fake_.Answer("GdipLoadImageFromFile", 10);
    EXPECT_EQ(DrawImageFile("a.png", nullptr), 10);
    const Calls calls = fake_.Calls();
    EXPECT_EQ(Calls(calls.end() - 3, calls.end()),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdiplusShutdown 1"}));
}

TEST_F(Display, FreesOnlyWhatWasMade) {
    fake_.Answer("GdipCreateFromHDC", 2);
    fake_.Answer("GdipLoadImageFromFile", 10);
    for (const char* name : {"", "a", "ab", "abc", "abcd"}) {
        EXPECT_EQ(DisplayImage(name, nullptr, 0, 0), 0);
        EXPECT_EQ(fake_.Calls().back(), "GdipDrawImage 0 0 0 0");
    }
}

} // namespace
