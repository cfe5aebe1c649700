// The annotate and crop actions on real files, with the engine behind and windows that are not there.
#include "annotate/actions.h"

#include "annotate/placing.h"
#include "imaging/exports/lumbrix.h"
#include "platform/cleanup.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/fakemessages.h"
#include "tests/support/picturefiles.h"

#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <optional>
#include <vector>

#ifdef _WIN32
#include "tests/support/heldfile.h"
#endif

namespace {

using namespace lumbrix;
using namespace tests;

using Opened = std::vector<std::string>;

// Windows that are not there. Each opening of the annotate and crop window does the next thing of a list.
class FakeWindows : public ActionWindows, public PictureView {
  public:
    FakeWindows(FakeOrder& order, AnnotateState& state) : order_(order), state_(state) {}

    PixelSize RefreshSizeLabel() override {
        if (labelled) {
            return *labelled;
        }
        PixelSize size;
        GetImageDimensions(order_.sourceFile.c_str(), &size.width, &size.height);
        return size;
    }

    void ShowAnnotateWindow(std::size_t stage, PixelSize size, const std::string& title) override {
        opened.push_back(title + " " + std::to_string(stage) + " " + std::to_string(size.width) + "x" +
                         std::to_string(size.height));
        state_.mode = EditModeForTitle(title, state_.mode);
        state_.isKeepRequested = false;
        PreparePreview(state_, stage, size, {1000, 1000});
        if (opened.size() <= inside.size()) {
            inside[opened.size() - 1]();
        }
    }

    void ShowCropDimensions() override { opened.push_back("dimensions"); }

    void SetPreviewImage(const std::string&) override {}

    // What a user does inside.
    void Write(const std::string& text, PixelPoint place) {
        FakeMessages messages;
        PlaceAnnotation(state_, *this, messages, text, place);
    }

    std::optional<PixelSize> labelled; // in place of the source's own size
    std::vector<std::function<void()>> inside;
    Opened opened;

  private:
    FakeOrder& order_;
    AnnotateState& state_;
};

class Actions : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        WritePlainPng(Path("source.png"), 60, 40, White);
        order_.sourceFile = Path("source.png");
        order_.target = Path("target.png");
    }

    void TearDown() override { UnloadImagingLibrary(); }

    void RunAnnotate() { RunAnnotateAction(order_, windows_, state_); }
    void RunCrop() { RunCropAction(order_, windows_, messages_, state_); }
    void Keep() { state_.isKeepRequested = true; }
    void Mark(const PixelRectangle& rectangle) { state_.cropRectangle = rectangle; }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // How many files of the stages are still there.
    int FilesLeft() const {
        int count = 0;
        for (const ImageStage& stage : state_.stages) {
            for (const std::string& file : {stage.previewSource, stage.previewResult, stage.result}) {
                count += std::filesystem::exists(file) ? 1 : 0;
            }
        }
        return count;
    }

    FakeOrder order_;
    AnnotateState state_;
    FakeMessages messages_;
    FakeWindows windows_{order_, state_};
    TemporaryFolder folder_;
    TemporaryFilesIn temporaryFiles_{folder_.Path()};
};

using AnnotateAction = Actions;
using CropAction = Actions;

const InkBox NoInk{};

TEST_F(AnnotateAction, WithoutASourceNothingOpens) {
    order_.sourceFile = "";
    RunAnnotate();
    order_.sourceFile = Path("none.png");
    RunAnnotate();
    EXPECT_EQ(windows_.opened, Opened{});
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(AnnotateAction, PictureWithoutWidthOrHeightOpensNothing) {
    for (const PixelSize size : {PixelSize{60, 0}, {0, 40}, {-1, 40}}) {
        windows_.labelled = size;
        RunAnnotate();
        RunCrop();
    }
    EXPECT_EQ(windows_.opened, Opened{});
}

TEST_F(AnnotateAction, PictureOfASinglePixelOpens) {
    for (const PixelSize size : {PixelSize{60, 1}, {1, 40}}) {
        windows_.labelled = size;
        RunAnnotate();
    }
    EXPECT_EQ(windows_.opened, (Opened{"Annotate image 0 60x1", "Annotate image 0 1x40"}));
}

TEST_F(AnnotateAction, StagesOfTheOneBeforeAreForgotten) {
    RunAnnotate();
    RunAnnotate();
    EXPECT_EQ(state_.stages.size(), 1u);
    EXPECT_EQ(windows_.opened, (Opened{"Annotate image 0 60x40", "Annotate image 0 60x40"}));
}

TEST_F(AnnotateAction, PathsAreCutAt259Characters) {
    order_.sourceFile = Path("source.png") + std::string(300, 'x');
    order_.target = Path("target.png") + std::string(300, 'x');
    windows_.labelled = PixelSize{60, 40};
    RunAnnotate();
    EXPECT_EQ(state_.stages[0].source, order_.sourceFile.substr(0, 259));
    RunCrop();
    EXPECT_EQ(state_.stages[0].source, order_.sourceFile.substr(0, 259));
    EXPECT_EQ(state_.stages[0].result, order_.target.substr(0, 259));
}

TEST_F(AnnotateAction, LatestAnnotationReachesTheTargetAsJpeg) {
    WriteBytes(folder_ / "target.png", "old");
    windows_.inside = {[&] { windows_.Write("HH", {20, 10}); }};
    RunAnnotate();
    EXPECT_EQ(windows_.opened, Opened{"Annotate image 0 60x40"});
    EXPECT_EQ(ReadBytes(folder_ / "target.png").substr(0, 2), "\xFF\xD8");
    EXPECT_GE(InkIn(Path("target.png")).left, 20);
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, KeepMakesTheResultTheNextSource) {
    windows_.inside = {[&] {
                           windows_.Write("H", {2, 2});
                           Keep();
                       },
                       [&] {
                           windows_.Write("H", {45, 22});
                       }};
    RunAnnotate();
    EXPECT_EQ(windows_.opened, (Opened{"Annotate image 0 60x40", "Annotate image 1 60x40"}));
    EXPECT_EQ(state_.stages.size(), 2u);
    EXPECT_EQ(state_.stages[1].source, state_.stages[0].result);
    const InkBox ink = InkIn(Path("target.png"));
    EXPECT_LT(ink.left, 10);
    EXPECT_GT(ink.right, 45);
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, KeepWithoutAnAnnotationOpensTheSameStage) {
    windows_.inside = {[&] { Keep(); }, [&] { windows_.Write("H", {2, 2}); }};
    RunAnnotate();
    EXPECT_EQ(windows_.opened, (Opened{"Annotate image 0 60x40", "Annotate image 0 60x40"}));
    EXPECT_NE(InkIn(Path("target.png")), NoInk);
}

TEST_F(AnnotateAction, ClosingWithoutAnAnnotationEmptiesTheTarget) {
    WriteBytes(folder_ / "target.png", "old");
    RunAnnotate();
    EXPECT_EQ(ReadBytes(folder_ / "target.png"), "");
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, ClosingRightAfterAKeepEmptiesTheTargetToo) {
    windows_.inside = {[&] {
        windows_.Write("H", {2, 2});
        Keep();
    }};
    RunAnnotate();
    EXPECT_EQ(windows_.opened.size(), 2u);
    EXPECT_EQ(ReadBytes(folder_ / "target.png"), "");
}

TEST_F(AnnotateAction, EmptyTargetLosesTheAnnotationInSilence) {
    order_.target = "";
    windows_.inside = {[&] { windows_.Write("H", {2, 2}); }};
    RunAnnotate();
    EXPECT_EQ(FilesLeft(), 0);
    EXPECT_TRUE(Exists("source.png"));
}

TEST_F(AnnotateAction, TargetIsReadBeforeTheWindowOpens) {
    windows_.inside = {[&] { order_.target = Path("other.png"); }};
    RunAnnotate();
    EXPECT_TRUE(Exists("target.png"));
    EXPECT_FALSE(Exists("other.png"));
}

TEST_F(AnnotateAction, SourceAsTargetIsReplaced) {
    order_.target = order_.sourceFile;
    windows_.inside = {[&] { windows_.Write("H", {2, 2}); }};
    RunAnnotate();
    EXPECT_NE(InkIn(Path("source.png")), NoInk);
}

#ifdef _WIN32

TEST_F(AnnotateAction, FileOfAStageThatCannotBeDeletedIsListed) {
    std::optional<HeldFile> held;
    std::string listed;
    windows_.inside = {[&] {
        windows_.Write("H", {2, 2});
        listed = state_.stages[0].previewSource;
        held.emplace(listed);
    }};
    RunAnnotate();
    EXPECT_TRUE(IsListedForCleanUp(listed)) << listed;
    EXPECT_EQ(FilesLeft(), 1);
    std::filesystem::remove(ProgramFolder() + "CleanUp.txt");
}

TEST_F(AnnotateAction, FilesOfAStageAreGivenUpInTheOrderOfTheirMaking) {
    std::filesystem::remove(ProgramFolder() + "CleanUp.txt");
    std::list<HeldFile> held;
    std::string listed;
    windows_.inside = {[&] {
        windows_.Write("H", {2, 2});
        const ImageStage& stage = state_.stages[0];
        for (const std::string& file : {stage.previewSource, stage.result, stage.previewResult}) {
            held.emplace_back(file);
            listed += file + "\r\n";
        }
    }};
    RunAnnotate();
    EXPECT_EQ(ReadBytes(ProgramFolder() + "CleanUp.txt"), listed);
    std::filesystem::remove(ProgramFolder() + "CleanUp.txt");
}

#endif

TEST_F(CropAction, WithoutASourceAsksForTheRectangle) {
    order_.sourceFile = "";
    RunCrop();
    EXPECT_EQ(windows_.opened, Opened{"dimensions"});
}

TEST_F(CropAction, SourceThatCannotBeReadOpensNothingAndTheRectangleStays) {
    Mark({1, 2, 3, 4});
    order_.sourceFile = Path("none.png");
    RunCrop();
    EXPECT_EQ(windows_.opened, Opened{});
    EXPECT_EQ(state_.cropRectangle.right, 3);
}

TEST_F(CropAction, SourceThatCannotBeReadLeavesTheTemporaryFilesOfItsStage) {
    order_.sourceFile = Path("none.png");
    RunCrop();
    int made = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        made += entry.path().filename().string().starts_with("IMG") ? 1 : 0;
    }
    EXPECT_EQ(made, 2);
    ASSERT_EQ(state_.stages.size(), 1u);
    EXPECT_EQ(state_.stages[0].source, Path("none.png"));
}

TEST_F(CropAction, MarkedPartIsWrittenAndShown) {
    windows_.inside = {[&] { Mark({10, 5, 40, 25}); }};
    RunCrop();
    EXPECT_EQ(windows_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 30x20"}));
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(30, 20));
    EXPECT_EQ(state_.stages[0].source, Path("target.png"));
    EXPECT_EQ(FilesLeft(), 3); // the new preview, the old preview's result, and the target
}

// The size of the new file is read by the name that the target box has then.
TEST_F(CropAction, PointerWaitsWhileThePartIsWritten) {
    int asked = 0;
    order_.onTarget = [&] {
        if (++asked == 2) {
            messages_.LookAtPointer();
            EXPECT_TRUE(Exists("target.png"));
        }
    };
    windows_.inside = {[&] {
                           messages_.LookAtPointer();
                           Mark({10, 5, 40, 25});
                       },
                       [&] { messages_.LookAtPointer(); }};
    RunCrop();
    EXPECT_EQ(messages_.pointer, (Opened{"arrow", "waits", "arrow"}));
}

TEST_F(CropAction, RectangleIsZeroedBeforeTheWindowOpens) {
    Mark({1, 2, 30, 40});
    RunCrop();
    EXPECT_EQ(state_.cropRectangle.right, 0);
    EXPECT_EQ(windows_.opened, Opened{"Crop image 0 60x40"});
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, RectangleWithoutAreaMakesNoCrop) {
    windows_.inside = {[&] { Mark({10, 5, 10, 25}); }};
    RunCrop();
    EXPECT_EQ(windows_.opened.size(), 1u);
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, RectangleDrawnUpwardsIsRefusedByTheCropAndTheWindowOpensAllTheSame) {
    windows_.inside = {[&] { Mark({40, 25, 10, 5}); }};
    RunCrop();
    EXPECT_EQ(windows_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 60x40"}));
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, EmptyTargetOpensTheCroppedWindowWithTheOldSize) {
    order_.target = "";
    windows_.inside = {[&] { Mark({10, 5, 40, 25}); }};
    RunCrop();
    EXPECT_EQ(windows_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 60x40"}));
}

TEST_F(CropAction, SizeOfTheCroppedWindowIsThatOfTheFileInTheTargetBoxByThen) {
    WritePlainPng(Path("other.png"), 7, 9, White);
    windows_.inside = {[&] {
        Mark({10, 5, 40, 25});
        order_.target = Path("other.png");
    }};
    RunCrop();
    EXPECT_EQ(windows_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 7x9"}));
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(30, 20));
}

TEST_F(CropAction, KeepAsksForNothingHere) {
    windows_.inside = {[&] { Keep(); }};
    RunCrop();
    EXPECT_EQ(windows_.opened.size(), 1u);
    EXPECT_TRUE(state_.isKeepRequested);
}

TEST_F(CropAction, TemporaryFilesStay) {
    std::string firstPreview;
    windows_.inside = {[&] {
                           firstPreview = state_.stages[0].previewSource;
                           Mark({10, 5, 40, 25});
                       },
                       [&] { EXPECT_NE(state_.stages[0].previewSource, firstPreview) << "the cropped window's own"; }};
    RunCrop();
    EXPECT_EQ(windows_.opened.size(), 2u);
    EXPECT_TRUE(std::filesystem::exists(firstPreview));
    EXPECT_TRUE(std::filesystem::exists(state_.stages[0].previewSource));
    EXPECT_TRUE(std::filesystem::exists(state_.stages[0].previewResult));
}

} // namespace
