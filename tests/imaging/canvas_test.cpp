// A picture that stays loaded: the order of the calls over the fake imaging library.
#include "imaging/canvas.h"

#include "imaging/session.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using CanvasCalls = std::vector<std::string>;

class CanvasImages : public tests::WithFake {
  protected:
    ImageHandle image_ = nullptr;
    DeviceContextHandle context_ = reinterpret_cast<DeviceContextHandle>(99);
};

ImageHandle HandleNumber(std::uintptr_t number) { return reinterpret_cast<ImageHandle>(number); }

TEST_F(CanvasImages, DrawsThroughThreePointsBicubicAndSmooth) {
    DrawCanvasImage(HandleNumber(11), {{{1, 2}, {30, -4}, {-5, 60}}}, context_);
    EXPECT_EQ(fake_.Calls(),
              (CanvasCalls{"GdipCreateFromHDC 99", "GdipSetInterpolationMode 55 4", "GdipSetSmoothingMode 55 2",
                           "GdipDrawImagePointsI 55 11 1 2 30 -4 -5 60 3", "GdipDeleteGraphics 55"}));
}

TEST_F(CanvasImages, NoStatusOfADrawingIsLookedAt) {
    fake_.Answer("GdipCreateFromHDC", 3);
    DrawCanvasImage(HandleNumber(11), {}, context_);
    EXPECT_EQ(fake_.Calls(), (CanvasCalls{"GdipCreateFromHDC 99", "GdipSetInterpolationMode 0 4",
                                          "GdipSetSmoothingMode 0 2", "GdipDeleteGraphics 0"}));
    fake_.Answer("GdipCreateFromHDC", 0);
    for (const char* name : {"GdipSetInterpolationMode", "GdipSetSmoothingMode", "GdipDrawImagePointsI"}) {
        fake_.Answer(name, 2);
        DrawCanvasImage(HandleNumber(11), {}, context_);
        EXPECT_EQ(fake_.Calls().back(), "GdipDeleteGraphics 55") << name;
    }
}

TEST_F(CanvasImages, LoadGivesTheSizeAndStartsNoSession) {
    EXPECT_EQ(LoadCanvasImage("a.png", &image_), (PixelSize{30, 20}));
    EXPECT_EQ(image_, HandleNumber(11));
    EXPECT_EQ(fake_.Calls(), (CanvasCalls{"GdipLoadImageFromFile", "GdipGetImageWidth 11", "GdipGetImageHeight 11"}));
}

TEST_F(CanvasImages, ImageBeforeIsNotDisposedOf) {
    image_ = HandleNumber(7);
    LoadCanvasImage("a.png", &image_);
    EXPECT_EQ(image_, HandleNumber(11));
    EXPECT_EQ(fake_.CountOf("GdipDisposeImage 7"), 0u);
}

TEST_F(CanvasImages, FileThatDoesNotLoadLeavesTheImageBefore) {
    image_ = HandleNumber(7);
    fake_.Answer("GdipLoadImageFromFile", 10);
    LoadCanvasImage("a.png", &image_);
    EXPECT_EQ(image_, HandleNumber(7));
    EXPECT_EQ(fake_.Calls(), (CanvasCalls{"GdipLoadImageFromFile", "GdipGetImageWidth 7", "GdipGetImageHeight 7"}));
}

TEST_F(CanvasImages, LoadWithoutAnImageLeavesTheImageBefore) {
    image_ = HandleNumber(7);
    fake_.GiveHandles(0, 0);
    LoadCanvasImage("a.png", &image_);
    EXPECT_EQ(image_, HandleNumber(7));
}

TEST_F(CanvasImages, SessionGivesItsTokenOrItsStatus) {
    SessionToken token = 0;
    EXPECT_EQ(StartLastingSession(&token), 0);
    EXPECT_NE(token, 0u);
    EndLastingSession(token);
    EXPECT_EQ(fake_.Calls(), (CanvasCalls{"GdiplusStartup", "GdiplusShutdown 1"}));
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(StartLastingSession(&token), 17);
}

TEST_F(CanvasImages, TokenOfZeroEndsNothing) {
    EndLastingSession(0);
    EXPECT_EQ(fake_.Calls(), CanvasCalls{});
}

TEST(CanvasImagesUnloaded, NothingHappensAndASessionCountsAsStarted) {
    SessionToken token = 5;
    EXPECT_EQ(StartLastingSession(&token), 0);
    EXPECT_EQ(token, 5u);
    ImageHandle image = nullptr;
    EXPECT_EQ(LoadCanvasImage("a.png", &image), PixelSize{});
    DrawCanvasImage(image, {}, nullptr);
    EXPECT_EQ(image, nullptr);
}

} // namespace
