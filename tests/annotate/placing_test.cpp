// Placing annotations and marking corners on real files, with the engine behind and a window that is not there.
#include "annotate/placing.h"

#include "imaging/exports/lumbrix.h"
#include "platform/files.h"
#include "tests/annotate/expectrectangle.h"
#include "tests/support/fakemessages.h"
#include "tests/support/picturefiles.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace {

using namespace lumbrix;
using namespace tests;

using Seen = std::vector<std::string>;

const Seen Unable{"Sorry...: Unable to handle annotation image"};

class FakeView : public PictureView {
  public:
    explicit FakeView(FakeMessages& messages) : messages_(messages) {}

    void SetPreviewImage(const std::string& path) override {
        shown.push_back(path);
        messages_.LookAtPointer();
        if (onShow) {
            onShow();
        }
    }

    Seen shown;
    std::function<void()> onShow;

  private:
    FakeMessages& messages_;
};

class Placing : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        state_.stages = {{Path("source.png"), Path("preview.tmp"), Path("shown.tmp"), Path("result.tmp")}};
        for (const char* name : {"preview.tmp", "shown.tmp", "result.tmp"}) {
            WriteBytes(folder_ / name, "");
        }
    }

    void TearDown() override {
        std::filesystem::current_path(folder_.Path().parent_path());
        UnloadImagingLibrary();
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    // A white source, opened in a control of 100 by 50 pixels.
    void Open(std::int32_t width, std::int32_t height) {
        WritePlainPng(Path("source.png"), width, height, White);
        PreparePreview(state_, 0, {width, height}, {100, 50});
    }

    void Place(const std::string& text, PixelPoint click = {}) {
        PlaceAnnotation(state_, view_, messages_, text, click);
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

    AnnotateState state_;
    FakeMessages messages_;
    FakeView view_{messages_};
    TemporaryFolder folder_;
};

using Preview = Placing;
using Corners = Placing;

TEST_F(Preview, PictureOfTheControlsSizeIsCopied) {
    Open(100, 50);
    EXPECT_EQ(state_.previewScale, 1.0F);
    EXPECT_EQ(state_.previewHeight, 50);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), ReadBytes(folder_ / "source.png"));
}

TEST_F(Preview, LargerPictureIsMadeSmallerAsJpeg) {
    Open(300, 100);
    EXPECT_EQ(state_.previewScale, 3.0F);
    EXPECT_EQ(state_.previewHeight, 33);
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp").substr(0, 2), "\xFF\xD8");
    EXPECT_EQ(SizeOf(Path("preview.tmp")), std::pair(99, 33));
}

TEST_F(Preview, DamagedPictureHasNoneAndCannotBeAnnotated) {
    WritePlainPng(Path("source.png"), 400, 200, White);
    const std::string whole = ReadBytes(folder_ / "source.png");
    WriteBytes(folder_ / "source.png", whole.substr(0, whole.size() - 40));
    PreparePreview(state_, 0, {400, 200}, {100, 50});
    EXPECT_TRUE(IsEmpty("preview.tmp"));
    Place("text");
    EXPECT_EQ(messages_.said, Unable);
    EXPECT_TRUE(view_.shown.empty());
    EXPECT_TRUE(IsEmpty("shown.tmp"));
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

// Of its ten rows a tenth of one is left on the screen.
TEST_F(Preview, PictureTooFlatForTheScreenHasNone) {
    Open(10000, 10);
    EXPECT_EQ(state_.previewScale, 100.0F);
    EXPECT_EQ(state_.previewHeight, 0);
    EXPECT_TRUE(IsEmpty("preview.tmp"));
    Place("text");
    EXPECT_EQ(messages_.said, Unable);
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Preview, PictureTooNarrowForTheScreenHasNone) {
    Open(2, 2000);
    EXPECT_EQ(state_.previewScale, 40.0F);
    EXPECT_EQ(state_.previewHeight, 50);
    EXPECT_TRUE(IsEmpty("preview.tmp"));
}

TEST_F(Preview, SourceThatIsGonePassesInSilence) {
    WriteBytes(folder_ / "preview.tmp", "old");
    PreparePreview(state_, 0, {100, 50}, {100, 50});
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), "old");
    PreparePreview(state_, 0, {1000, 500}, {100, 50});
    EXPECT_EQ(ReadBytes(folder_ / "preview.tmp"), "old");
}

TEST_F(Placing, TextStandsAtTheCursorOnBothPictures) {
    Open(400, 200);
    state_.textStyle.fontSize = 12;
    Place("HHH", {50, 25});
    EXPECT_EQ(view_.shown, Seen{Path("shown.tmp")});
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
    Place("text");
    EXPECT_TRUE(wasEmpty);
    EXPECT_FALSE(IsEmpty("result.tmp"));
}

TEST_F(Placing, SecondClickTakesThePlaceOfTheFirst) {
    Open(400, 200);
    Place("first", {0, 0});
    Place("2nd", {70, 30});
    EXPECT_GE(InkIn(Path("result.tmp")).left, 280);
    EXPECT_GE(InkIn(Path("shown.tmp")).left, 70);
    EXPECT_EQ(state_.cropCorner.x, 70);
    EXPECT_EQ(state_.cropCorner.y, 30);
}

TEST_F(Placing, StampStandsAtTheCursorInItsOwnSize) {
    Open(400, 200);
    const std::string stamp = StampPath();
    WritePlainPng(stamp, 20, 8, tests::Black);
    Place(stamp, {50, 25});
    const InkBox onScreen = InkIn(Path("shown.tmp"));
    EXPECT_EQ(onScreen, (InkBox{50, 25, 70, 33}));
    const InkBox full = InkIn(Path("result.tmp"));
    EXPECT_EQ(full, (InkBox{200, 100, 220, 108}));
}

TEST_F(Placing, TextWithAColonBehindItsFirstLetterIsAStampThatFails) {
    Open(400, 200);
    Place("a: that is");
    EXPECT_EQ(messages_.said, Unable);
    EXPECT_TRUE(IsEmpty("shown.tmp"));
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Placing, OneCharacterIsText) {
    Open(400, 200);
    Place(":");
    EXPECT_EQ(view_.shown, Seen{Path("shown.tmp")});
}

TEST_F(Placing, EmptyTextIsAskedForInAnnotateModeOnly) {
    Open(400, 200);
    Place("");
    EXPECT_EQ(messages_.said,
              Seen{"Unable to proceed: You forgot to enter the annotation\r\nPlease also select the font "
                   "you want to use."});
    EXPECT_TRUE(IsEmpty("shown.tmp"));
    for (const EditMode mode : {EditMode::Crop, EditMode::Cropped}) {
        messages_.said.clear();
        state_.mode = mode;
        Place("");
        EXPECT_EQ(messages_.said, Seen{});
    }
}

TEST_F(Placing, MissingPreviewIsToldAndTheFullSizeStays) {
    Open(400, 200);
    std::filesystem::remove(folder_ / "shown.tmp");
    std::filesystem::remove(folder_ / "preview.tmp");
    Place("text");
    EXPECT_EQ(messages_.said, Unable);
    EXPECT_TRUE(IsEmpty("result.tmp"));
}

TEST_F(Placing, WhileKeepIsRequestedNothingIsWritten) {
    Open(400, 200);
    state_.isKeepRequested = true;
    Place("text");
    EXPECT_EQ(messages_.said, Unable);
    for (const char* content : {"1", "an older one"}) {
        view_.shown.clear();
        WriteBytes(folder_ / "shown.tmp", content);
        Place("text");
        EXPECT_EQ(view_.shown, Seen{Path("shown.tmp")});
    }
    view_.shown.clear();
    messages_.said.clear();
    Place("text");
    EXPECT_EQ(view_.shown, Seen{Path("shown.tmp")});
    EXPECT_TRUE(IsEmpty("result.tmp"));
    EXPECT_EQ(ReadBytes(folder_ / "shown.tmp"), "an older one");
}

TEST_F(Placing, FontStylesAndColorAreThoseChosen) {
    Open(400, 200);
    Place("HHH");
    const InkBox plain = InkIn(Path("result.tmp"));
    state_.textStyle.bold = 1;
    state_.textStyle.underline = 1;
    state_.textStyle.red = 255;
    Place("HHH");
    state_.textStyle.bold = state_.textStyle.underline = state_.textStyle.red = 0;
    const InkBox styled = InkIn(Path("result.tmp"));
    EXPECT_GT(styled.right, plain.right);
    EXPECT_GT(styled.bottom, plain.bottom);
    const BmpView picture = ReadPicture(Path("result.tmp"));
    const Rgb line = picture.At((styled.left + styled.right) / 2, styled.bottom - 1);
    EXPECT_GT(line.red, line.green + 100);
}

TEST(TextStyle, IsPlainBlackArialUntilAnotherIsChosen) {
    const TextStyle style;
    EXPECT_EQ(style.fontName, "Arial");
    EXPECT_EQ(style.fontSize, 10);
    EXPECT_EQ((std::vector{style.bold, style.italic, style.underline, style.strikeout}), (std::vector{0, 0, 0, 0}));
    EXPECT_EQ((std::vector{style.red, style.green, style.blue}), (std::vector{0, 0, 0}));
}

TEST_F(Placing, EachStyleChangesTheText) {
    Open(400, 200);
    Place("HHH");
    std::set<std::string> seen{ReadBytes(folder_ / "result.tmp")};
    for (std::int32_t TextStyle::*style :
         {&TextStyle::bold, &TextStyle::italic, &TextStyle::underline, &TextStyle::strikeout}) {
        state_.textStyle = {};
        state_.textStyle.*style = 1;
        Place("HHH");
        seen.insert(ReadBytes(folder_ / "result.tmp"));
    }
    EXPECT_EQ(seen.size(), 5u);
}

TEST_F(Placing, PointerWaitsUntilBothPicturesAreMade) {
    Open(400, 200);
    Place("text");
    EXPECT_EQ(messages_.pointer, Seen{"waits"});
    EXPECT_EQ(messages_.waits, 0);
    messages_.onShow = [&] { messages_.LookAtPointer(); };
    Place("");
    EXPECT_EQ(messages_.pointer, (Seen{"waits", "arrow"})) << "a missing text is no work";
}

TEST_F(Preview, OpeningMakesAndShowsItWhileThePointerWaits) {
    WritePlainPng(Path("source.png"), 200, 100, White);
    OpenPicture(state_, view_, messages_, 0, {200, 100}, {100, 50});
    EXPECT_EQ(view_.shown, Seen{Path("preview.tmp")});
    EXPECT_EQ(SizeOf(Path("preview.tmp")), std::pair(100, 50));
    EXPECT_EQ(messages_.pointer, Seen{"waits"});
    EXPECT_EQ(messages_.waits, 0);
}

TEST_F(Preview, IsThatOfTheStage) {
    state_.stages.push_back({Path("other.png"), Path("other.tmp"), "", ""});
    WritePlainPng(Path("other.png"), 10, 20, White);
    PreparePreview(state_, 1, {10, 20}, {100, 50});
    EXPECT_EQ(state_.currentStage, 1u);
    EXPECT_EQ(ReadBytes(folder_ / "other.tmp"), ReadBytes(folder_ / "other.png"));
}

TEST_F(Corners, PressAndReleaseMarkTheRectangle) {
    state_.previewScale = 2.5F;
    MarkFirstCorner(state_, {1, 3});
    EXPECT_TRUE(MarkCorner(state_, {10, 20}));
    ExpectRectangle(state_.cropRectangle, 2, 8, 25, 50);
    EXPECT_FALSE(state_.isCornerPending);
}

TEST_F(Corners, WithoutAPressTwoReleasesMarkTheRectangle) {
    EXPECT_FALSE(MarkCorner(state_, {30, 40}));
    EXPECT_TRUE(state_.isCornerPending);
    EXPECT_EQ(state_.cropRectangle.right, 0);
    EXPECT_TRUE(MarkCorner(state_, {10, 20}));
    ExpectRectangle(state_.cropRectangle, 30, 40, 10, 20);
}

} // namespace
