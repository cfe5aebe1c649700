// The annotate and crop actions on real files, with the engine behind and windows that are not there.
#include "mainwindow/actions.h"

#include "annotate/placing.h"
#include "batch/croprect.h"
#include "imaging/exports/lumbrix.h"
#include "tests/support/picturefiles.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

using Opened = std::vector<std::string>;

// A main window that is not there. Each opening of the annotate and crop window does the next thing of a list.
class FakeActionDesk : public ActionDesk, public PictureView {
  public:
    std::string SourceFile() const override { return sourceFile; }
    std::string Target() const override { return target; }

    void RefreshSizeLabel(std::int32_t* width, std::int32_t* height) override {
        GetImageDimensions(sourceFile.c_str(), width, height);
    }

    void ShowAnnotateWindow(std::size_t stage, std::int32_t width, std::int32_t height,
                            const std::string& title) override {
        opened.push_back(title + " " + std::to_string(stage) + " " + std::to_string(width) + "x" +
                         std::to_string(height));
        EditMode = title == "Annotate image" ? AnnotateMode : title == "Crop image" ? CropMode : CroppedMode;
        KeepRequested = false;
        PreparePreview(stage, width, height, 1000, 1000);
        if (opened.size() <= inside.size()) {
            inside[opened.size() - 1]();
        }
    }

    void ShowCropDimensions() override { opened.push_back("dimensions"); }

    PixelPoint CursorPoint() const override { return cursor; }
    void SetPreviewImage(const std::string&) override {}
    void Show(const std::string&, const std::string&) override {}

    // What a user does inside.
    void Write(const std::string& text, PixelPoint place) {
        cursor = place;
        PlaceAnnotation(*this, text);
    }
    static void Keep() { KeepRequested = true; }

    std::string sourceFile;
    std::string target;
    std::vector<std::function<void()>> inside;
    Opened opened;
    PixelPoint cursor;
};

class Actions : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        WritePlainPng(Path("source.png"), 60, 40, White);
        desk_.sourceFile = Path("source.png");
        desk_.target = Path("target.png");
        CornerPending = false;
        CropRect = {};
    }

    void TearDown() override {
        CropRect = {};
        KeepRequested = false;
        UnloadImagingLibrary();
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // How many files of the stages are still there.
    static int FilesLeft() {
        int count = 0;
        for (const ImageStage& stage : ImageStages) {
            for (const std::string& file : {stage.previewSource, stage.previewResult, stage.result}) {
                count += std::filesystem::exists(file) ? 1 : 0;
            }
        }
        return count;
    }

    FakeActionDesk desk_;
    TemporaryFolder folder_;
    TemporaryFilesIn temporaryFiles_{folder_.Path()};
};

using AnnotateAction = Actions;
using CropAction = Actions;

const InkBox NoInk{};

TEST_F(AnnotateAction, WithoutASourceNothingOpens) {
    desk_.sourceFile = "";
    RunAnnotateAction(desk_);
    desk_.sourceFile = Path("none.png");
    RunAnnotateAction(desk_);
    EXPECT_EQ(desk_.opened, Opened{});
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(AnnotateAction, LatestAnnotationReachesTheTargetAsJpeg) {
    WriteBytes(folder_ / "target.png", "old");
    desk_.inside = {[&] { desk_.Write("HH", {20, 10}); }};
    RunAnnotateAction(desk_);
    EXPECT_EQ(desk_.opened, Opened{"Annotate image 0 60x40"});
    EXPECT_EQ(ReadBytes(folder_ / "target.png").substr(0, 2), "\xFF\xD8");
    EXPECT_GE(InkIn(Path("target.png")).left, 20);
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, KeepMakesTheResultTheNextSource) {
    desk_.inside = {[&] {
                        desk_.Write("H", {2, 2});
                        FakeActionDesk::Keep();
                    },
                    [&] {
                        desk_.Write("H", {45, 22});
                    }};
    RunAnnotateAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Annotate image 0 60x40", "Annotate image 1 60x40"}));
    EXPECT_EQ(ImageStages.size(), 2u);
    EXPECT_EQ(ImageStages[1].source, ImageStages[0].result);
    const InkBox ink = InkIn(Path("target.png"));
    EXPECT_LT(ink.left, 10);
    EXPECT_GT(ink.right, 45);
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, KeepWithoutAnAnnotationOpensTheSameStage) {
    desk_.inside = {[&] { FakeActionDesk::Keep(); }, [&] { desk_.Write("H", {2, 2}); }};
    RunAnnotateAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Annotate image 0 60x40", "Annotate image 0 60x40"}));
    EXPECT_NE(InkIn(Path("target.png")), NoInk);
}

TEST_F(AnnotateAction, ClosingWithoutAnAnnotationEmptiesTheTarget) {
    WriteBytes(folder_ / "target.png", "old");
    RunAnnotateAction(desk_);
    EXPECT_EQ(ReadBytes(folder_ / "target.png"), "");
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(AnnotateAction, ClosingRightAfterAKeepEmptiesTheTargetToo) {
    desk_.inside = {[&] {
        desk_.Write("H", {2, 2});
        FakeActionDesk::Keep();
    }};
    RunAnnotateAction(desk_);
    EXPECT_EQ(desk_.opened.size(), 2u);
    EXPECT_EQ(ReadBytes(folder_ / "target.png"), "");
}

TEST_F(AnnotateAction, EmptyTargetLosesTheAnnotationInSilence) {
    desk_.target = "";
    desk_.inside = {[&] { desk_.Write("H", {2, 2}); }};
    RunAnnotateAction(desk_);
    EXPECT_EQ(FilesLeft(), 0);
    EXPECT_TRUE(Exists("source.png"));
}

TEST_F(AnnotateAction, TargetIsReadBeforeTheWindowOpens) {
    desk_.inside = {[&] { desk_.target = Path("other.png"); }};
    RunAnnotateAction(desk_);
    EXPECT_TRUE(Exists("target.png"));
    EXPECT_FALSE(Exists("other.png"));
}

TEST_F(AnnotateAction, SourceAsTargetIsReplaced) {
    desk_.target = desk_.sourceFile;
    desk_.inside = {[&] { desk_.Write("H", {2, 2}); }};
    RunAnnotateAction(desk_);
    EXPECT_NE(InkIn(Path("source.png")), NoInk);
}

TEST_F(CropAction, WithoutASourceAsksForTheRectangle) {
    desk_.sourceFile = "";
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, Opened{"dimensions"});
}

TEST_F(CropAction, SourceThatCannotBeReadOpensNothingAndTheRectangleStays) {
    CropRect = {1, 2, 3, 4};
    desk_.sourceFile = Path("none.png");
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, Opened{});
    EXPECT_EQ(CropRect.right, 3);
}

TEST_F(CropAction, MarkedPartIsWrittenAndShown) {
    desk_.inside = {[] { CropRect = {10, 5, 40, 25}; }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 30x20"}));
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(30, 20));
    EXPECT_EQ(ImageStages[0].source, Path("target.png"));
    EXPECT_EQ(FilesLeft(), 3); // the new preview, the old preview's result, and the target
}

TEST_F(CropAction, RectangleIsZeroedBeforeTheWindowOpens) {
    CropRect = {1, 2, 30, 40};
    RunCropAction(desk_);
    EXPECT_EQ(CropRect.right, 0);
    EXPECT_EQ(desk_.opened, Opened{"Crop image 0 60x40"});
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, RectangleWithoutAreaMakesNoCrop) {
    desk_.inside = {[] { CropRect = {10, 5, 10, 25}; }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened.size(), 1u);
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, RectangleDrawnUpwardsIsRefusedByTheCropAndTheWindowOpensAllTheSame) {
    desk_.inside = {[] { CropRect = {40, 25, 10, 5}; }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 60x40"}));
    EXPECT_FALSE(Exists("target.png"));
}

TEST_F(CropAction, EmptyTargetOpensTheCroppedWindowWithTheOldSize) {
    desk_.target = "";
    desk_.inside = {[] { CropRect = {10, 5, 40, 25}; }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 60x40"}));
}

TEST_F(CropAction, SizeOfTheCroppedWindowIsThatOfTheFileInTheTargetBoxByThen) {
    WritePlainPng(Path("other.png"), 7, 9, White);
    desk_.inside = {[&] {
        CropRect = {10, 5, 40, 25};
        desk_.target = Path("other.png");
    }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened, (Opened{"Crop image 0 60x40", "Cropped image 0 7x9"}));
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(30, 20));
}

TEST_F(CropAction, KeepAsksForNothingHere) {
    desk_.inside = {[] { FakeActionDesk::Keep(); }};
    RunCropAction(desk_);
    EXPECT_EQ(desk_.opened.size(), 1u);
    EXPECT_TRUE(KeepRequested);
}

TEST_F(CropAction, TemporaryFilesStay) {
    std::string firstPreview;
    desk_.inside = {[&] { firstPreview = ImageStages[0].previewSource; }};
    RunCropAction(desk_);
    EXPECT_TRUE(std::filesystem::exists(firstPreview));
    EXPECT_TRUE(std::filesystem::exists(ImageStages[0].previewResult));
}

} // namespace
