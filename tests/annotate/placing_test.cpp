// Placing annotations and marking corners on real files, with the engine behind and a window that is not there.
#include "annotate/placing.h"

#include "batch/croprect.h"
#include "imaging/exports/lumbrix.h"
#include "platform/files.h"
#include "tests/support/picturefiles.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace lumbrix;
using namespace tests;

using Seen = std::vector<std::string>;

const Seen Unable{"Sorry...: Unable to handle annotation image"};

class FakeView : public PictureView {
  public:
    PixelPoint CursorPoint() const override { return cursor; }
    void SetPreviewImage(const std::string& path) override {
        seen.push_back("shown " + path);
        if (onShow) {
            onShow();
        }
    }
    void Show(const std::string& text, const std::string& title) override { seen.push_back(title + ": " + text); }

    PixelPoint cursor;
    Seen seen;
    std::function<void()> onShow;
};

class Placing : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        ImageStages = {{Path("source.png"), Path("preview.tmp"), Path("shown.tmp"), Path("result.tmp")}};
        for (const char* name : {"preview.tmp", "shown.tmp", "result.tmp"}) {
            WriteBytes(folder_ / name, "");
        }
        CurrentStage = 0;
        EditMode = AnnotateMode;
        KeepRequested = false;
        CornerPending = false;
        CropRect = {};
        DefaultTextFontSize = 10;
    }

    void TearDown() override {
        std::filesystem::current_path(folder_.Path().parent_path());
        CropRect = {};
        UnloadImagingLibrary();
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    // A white source, opened in a control of 100 by 50 pixels.
    void Open(std::int32_t width, std::int32_t height) const {
        WritePlainPng(Path("source.png"), width, height, White);
        PreparePreview(0, width, height, 100, 50);
    }

    // A path with a colon behind its first letter, which all paths have where there are drives.
    std::string StampPath() const {
        if (PathSeparator == '\\') {
            return Path("stamp.png");
        }
        std::filesystem::current_path(folder_.Path());
        return "s:stamp.png";
    }

    bool IsEmpty(const std::string& name) const { return std::filesystem::file_size(folder_ / name) == 0; }

    FakeView view_;
    TemporaryFolder folder_;
};

using Preview = Placing;
using Corners = Placing;

TEST_F(Preview, PictureOfTheControlsSizeIsCopied) {
    Open(100, 50);
    EXPECT_EQ(PreviewScale, 1.0F);
    EXPECT_EQ(PreviewHeight, 50);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), ReadBytes(folder_ / "source.png"));
}

TEST_F(Preview, LargerPictureIsMadeSmallerAsJpeg) {
    Open(300, 100);
    EXPECT_EQ(PreviewScale, 3.0F);
    EXPECT_EQ(PreviewHeight, 33);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp").substr(0, 2), "\xFF\xD8");
    EXPECT_EQ(SizeOf(Path("preview.tmp")), std::pair(99, 33));
}

// Of its ten rows a tenth of one is left on the screen.
TEST_F(Preview, PictureTooFlatForTheScreenHasNone) {
    Open(10000, 10);
    EXPECT_EQ(PreviewScale, 100.0F);
    EXPECT_EQ(PreviewHeight, 0);
    EXPECT_TRUE(IsEmpty("preview.tmp"));
    PlaceAnnotation(view_, "text");
    EXPECT_EQ(view_.seen, Unable);
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Preview, PictureTooNarrowForTheScreenHasNone) {
    Open(2, 2000);
    EXPECT_EQ(PreviewScale, 40.0F);
    EXPECT_EQ(PreviewHeight, 50);
    EXPECT_TRUE(IsEmpty("preview.tmp"));
}

TEST_F(Preview, SourceThatIsGonePassesInSilence) {
    WriteBytes(folder_ / "preview.tmp", "old");
    PreparePreview(0, 100, 50, 100, 50);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), "old");
    PreparePreview(0, 1000, 500, 100, 50);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), "old");
}

TEST_F(Placing, TextStandsAtTheCursorOnBothPictures) {
    Open(400, 200);
    view_.cursor = {50, 25};
    DefaultTextFontSize = 12;
    PlaceAnnotation(view_, "HHH");
    EXPECT_EQ(view_.seen, Seen{"shown " + Path("shown.tmp")});
    EXPECT_EQ(SizeOf(Path("shown.tmp")), std::pair(100, 50));
    EXPECT_EQ(SizeOf(Path("result.tmp")), std::pair(400, 200));
    // Nothing left of or above the cursor, ink at most one letter's side bearing behind it.
    const InkBox onScreen = InkIn(Path("shown.tmp"));
    EXPECT_GE(onScreen.left, 50);
    EXPECT_LE(onScreen.left, 50 + 4);
    EXPECT_GE(onScreen.top, 25);
    const InkBox full = InkIn(Path("result.tmp"));
    EXPECT_GE(full.left, 200);
    EXPECT_LE(full.left, 200 + 16);
    EXPECT_GE(full.top, 100);
    EXPECT_NEAR(full.bottom - full.top, 4 * (onScreen.bottom - onScreen.top), 8);
}

TEST_F(Placing, FullSizeIsUntouchedUntilThePreviewIsShown) {
    Open(400, 200);
    bool wasEmpty = false;
    view_.onShow = [&] { wasEmpty = IsEmpty("result.tmp"); };
    PlaceAnnotation(view_, "text");
    EXPECT_TRUE(wasEmpty);
    EXPECT_FALSE(IsEmpty("result.tmp"));
}

TEST_F(Placing, SecondClickTakesThePlaceOfTheFirst) {
    Open(400, 200);
    view_.cursor = {0, 0};
    PlaceAnnotation(view_, "first");
    view_.cursor = {70, 30};
    PlaceAnnotation(view_, "2nd");
    EXPECT_GE(InkIn(Path("result.tmp")).left, 280);
    EXPECT_GE(InkIn(Path("shown.tmp")).left, 70);
    EXPECT_EQ(CropCorner.x, 70);
    EXPECT_EQ(CropCorner.y, 30);
}

TEST_F(Placing, StampStandsAtTheCursorInItsOwnSize) {
    Open(400, 200);
    const std::string stamp = StampPath();
    WritePlainPng(stamp, 20, 8, tests::Black);
    view_.cursor = {50, 25};
    PlaceAnnotation(view_, stamp);
    const InkBox onScreen = InkIn(Path("shown.tmp"));
    EXPECT_EQ(onScreen, (InkBox{50, 25, 70, 33}));
    const InkBox full = InkIn(Path("result.tmp"));
    EXPECT_EQ(full, (InkBox{200, 100, 220, 108}));
}

TEST_F(Placing, TextWithAColonBehindItsFirstLetterIsAStampThatFails) {
    Open(400, 200);
    PlaceAnnotation(view_, "a: that is");
    EXPECT_EQ(view_.seen, Unable);
    EXPECT_TRUE(IsEmpty("shown.tmp"));
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Placing, OneCharacterIsText) {
    Open(400, 200);
    PlaceAnnotation(view_, ":");
    EXPECT_EQ(view_.seen, Seen{"shown " + Path("shown.tmp")});
}

TEST_F(Placing, EmptyTextIsAskedForInAnnotateModeOnly) {
    Open(400, 200);
    PlaceAnnotation(view_, "");
    EXPECT_EQ(view_.seen, Seen{"Unable to proceed: You forgot to enter the annotation\r\nPlease also select the font "
                               "you want to use."});
    EXPECT_TRUE(IsEmpty("shown.tmp"));
    for (const std::int32_t mode : {CropMode, CroppedMode}) {
        view_.seen.clear();
        EditMode = mode;
        PlaceAnnotation(view_, "");
        EXPECT_EQ(view_.seen, Seen{});
    }
}

TEST_F(Placing, MissingPreviewIsToldAndTheFullSizeStays) {
    Open(400, 200);
    std::filesystem::remove(folder_ / "shown.tmp");
    std::filesystem::remove(folder_ / "preview.tmp");
    PlaceAnnotation(view_, "text");
    EXPECT_EQ(view_.seen, Unable);
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Placing, WhileKeepIsRequestedNothingIsWritten) {
    Open(400, 200);
    KeepRequested = true;
    PlaceAnnotation(view_, "text");
    EXPECT_EQ(view_.seen, Unable);
    WriteBytes(folder_ / "shown.tmp", "an older one");
    view_.seen.clear();
    PlaceAnnotation(view_, "text");
    EXPECT_EQ(view_.seen, Seen{"shown " + Path("shown.tmp")});
    EXPECT_TRUE(IsEmpty("result.tmp"));
    EXPECT_EQ(ReadBytes(folder_ / "shown.tmp"), "an older one");
}

TEST_F(Placing, FontStylesAndColorAreThoseChosen) {
    Open(400, 200);
    PlaceAnnotation(view_, "HHH");
    const InkBox plain = InkIn(Path("result.tmp"));
    AnnotationBold = 1;
    AnnotationUnderline = 1;
    AnnotationRed = 255;
    PlaceAnnotation(view_, "HHH");
    AnnotationBold = AnnotationUnderline = AnnotationRed = 0;
    const InkBox styled = InkIn(Path("result.tmp"));
    EXPECT_GT(styled.right, plain.right);
    EXPECT_GT(styled.bottom, plain.bottom);
    const BmpView picture = ReadPicture(Path("result.tmp"));
    const Rgb line = picture.At((styled.left + styled.right) / 2, styled.bottom - 1);
    EXPECT_GT(line.red, line.green + 100);
}

TEST_F(Corners, PressAndReleaseMarkTheRectangle) {
    PreviewScale = 2.5F;
    view_.cursor = {1, 3};
    MarkFirstCorner(view_);
    view_.cursor = {10, 20};
    EXPECT_TRUE(MarkCorner(view_));
    EXPECT_EQ(CropRect.left, 2);
    EXPECT_EQ(CropRect.top, 8);
    EXPECT_EQ(CropRect.right, 25);
    EXPECT_EQ(CropRect.bottom, 50);
    EXPECT_FALSE(CornerPending);
}

TEST_F(Corners, WithoutAPressTwoReleasesMarkTheRectangle) {
    PreviewScale = 1;
    view_.cursor = {30, 40};
    EXPECT_FALSE(MarkCorner(view_));
    EXPECT_TRUE(CornerPending);
    EXPECT_EQ(CropRect.right, 0);
    view_.cursor = {10, 20};
    EXPECT_TRUE(MarkCorner(view_));
    EXPECT_EQ(CropRect.left, 30);
    EXPECT_EQ(CropRect.bottom, 20);
}

} // namespace
