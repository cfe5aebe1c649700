// The canvas on a window of the test's own, and the file of what it shows.
#include "freeedit/canvas.h"

#include "imaging/exports/internal.h"
#include "imaging/exports/lumbrix.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

class CanvasOfItsOwn : public testing::Test {
  protected:
    CanvasOfItsOwn() {
        LoadImagingLibrary();
        EXPECT_EQ(StartCanvasSession(&session_), 0);
        transform_.settings.cornerTexts = {"0", "0", "40", "0", "0", "30"};
        transform_.settings.stretchFactor = 1;
        EXPECT_TRUE(canvas_.CreateCanvas(owner_.Handle()));
    }
    ~CanvasOfItsOwn() override {
        canvas_.End();
        EndCanvasSession(session_);
        UnloadImagingLibrary();
    }

    void ShowGreenPicture() {
        WriteBytes(folder_ / "green.bmp", MakeBmp(40, 30, [](int, int) { return Green; }));
        canvas_.LoadCanvasImage((folder_ / "green.bmp").string());
        canvas_.ApplyTransform();
    }

    std::string Path(const char* name) const { return (folder_ / name).string(); }
    BmpView Captured(const CanvasArea& area) {
        EXPECT_TRUE(canvas_.Capture(Path("seen.bmp"), area));
        return BmpView(ReadBytes(folder_ / "seen.bmp"));
    }

    OwnWindow owner_{500, 400};
    TemporaryFolder folder_;
    uintptr_t session_ = 0;
    CanvasTransform transform_;
    Canvas canvas_{transform_};
};

TEST_F(CanvasOfItsOwn, BelongsToItsOwnerAndHasNoTitle) {
    EXPECT_EQ(GetWindow(canvas_.Handle(), GW_OWNER), owner_.Handle());
    EXPECT_EQ(GetWindowTextLengthA(canvas_.Handle()), 0);
    const RECT size = canvas_.InPixels({0, 0, 404, 239});
    RECT frame{};
    GetWindowRect(canvas_.Handle(), &frame);
    EXPECT_EQ(frame.left, 0);
    EXPECT_EQ(frame.top, 0);
    EXPECT_NEAR(frame.right, size.right + GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CXVSCROLL));
}

TEST_F(CanvasOfItsOwn, FileHasEveryFieldOfItsHeader) {
    ASSERT_TRUE(canvas_.Capture(Path("seen.bmp"), {0, 0, 5, 3}));
    // Rows of five pixels take sixteen bytes.
    const std::string header("BM\x66\0\0\0\0\0\0\0\x36\0\0\0"
                             "\x28\0\0\0\5\0\0\0\3\0\0\0\1\0\x18\0\0\0\0\0\x30\0\0\0"
                             "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0",
                             54);
    const std::string file = ReadBytes(folder_ / "seen.bmp");
    EXPECT_EQ(file.substr(0, 54), header);
    EXPECT_EQ(file.size(), 102u);
}

TEST_F(CanvasOfItsOwn, CapturesThePictureAndTheWhiteAroundIt) {
    ShowGreenPicture();
    const BmpView seen = Captured({30, 20, 20, 15});
    ASSERT_EQ(seen.Width(), 20);
    ASSERT_EQ(seen.Height(), 15);
    EXPECT_EQ(seen.At(0, 0), Green);
    EXPECT_EQ(seen.At(8, 8), Green);
    EXPECT_EQ(seen.At(11, 5), White);
    EXPECT_EQ(seen.At(5, 11), White);
}

TEST_F(CanvasOfItsOwn, WithoutAHeightAllOfItIsCaptured) {
    RECT client{};
    GetClientRect(canvas_.Handle(), &client);
    for (const int height : {0, -3}) {
        const BmpView seen = Captured({7, 8, 9, height});
        EXPECT_EQ(seen.Width(), client.right);
        EXPECT_EQ(seen.Height(), client.bottom);
    }
}

TEST_F(CanvasOfItsOwn, SaysWhetherItCouldBeCaptured) {
    EXPECT_FALSE(canvas_.Capture("", {0, 0, 5, 3}));
    EXPECT_FALSE(canvas_.Capture(Path("none/seen.bmp"), {0, 0, 5, 3}));
    EXPECT_FALSE(canvas_.Capture(Path("seen.bmp"), {0, 0, 0, 3})) << "it has no width";
    canvas_.End();
    EXPECT_FALSE(canvas_.Capture(Path("seen.bmp"), {0, 0, 5, 3})) << "it is gone";
}

TEST_F(CanvasOfItsOwn, LoadedPictureLiesAtItsNaturalPlace) {
    ShowGreenPicture();
    WriteBytes(folder_ / "wide.bmp", MakeBmp(90, 20, [](int, int) { return tests::Red; }));
    canvas_.LoadCanvasImage(Path("wide.bmp"));
    EXPECT_EQ(canvas_.Points()[1].x, 90);
    EXPECT_EQ(canvas_.Points()[2], (PixelPoint{0, 20}));
}

TEST_F(CanvasOfItsOwn, NextRepaintShowsThePictureThatWasLoadedLast) {
    ShowGreenPicture();
    WriteBytes(folder_ / "red.bmp", MakeBmp(40, 30, [](int, int) { return tests::Red; }));
    canvas_.LoadCanvasImage(Path("red.bmp"));
    EXPECT_EQ(Captured({0, 0, 10, 10}).At(5, 5), Green);
    RedrawWindow(canvas_.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(Captured({0, 0, 10, 10}).At(5, 5), tests::Red);
}

TEST_F(CanvasOfItsOwn, UnchangedSettingsDrawNothing) {
    ShowGreenPicture();
    WriteBytes(folder_ / "red.bmp", MakeBmp(40, 30, [](int, int) { return tests::Red; }));
    canvas_.LoadCanvasImage(Path("red.bmp"));
    canvas_.ApplyTransform();
    EXPECT_EQ(Captured({0, 0, 10, 10}).At(5, 5), Green);
    transform_.settings.panX = 1;
    canvas_.ApplyTransform();
    EXPECT_EQ(Captured({0, 0, 10, 10}).At(5, 5), tests::Red);
    EXPECT_EQ(Captured({0, 0, 10, 10}).At(0, 5), White);
}

} // namespace
