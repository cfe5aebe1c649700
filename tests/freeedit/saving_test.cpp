// What Save does to files, with a canvas that only keeps a record.
#include "freeedit/saving.h"

#include "freeedit/capture.h"
#include "imaging/exports/lumbrix.h"
#include "tests/support/temporaryfolder.h"
#include "toolkit/bitmapfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

// A picture of one blue pixel over a red one.
const std::vector<std::uint8_t> RedUnderBlue{0, 0, 255, 0, 255, 0, 0, 0};

class RecordingCanvas : public CanvasView {
  public:
    void ApplyTransform() override {
        calls.push_back("transform");
        points_ = {{{10, 60}, {97, 10}, {35, 103}}};
    }

    const CornerPoints& Points() const override { return points_; }

    bool Capture(const std::string& path, const CanvasArea& area) override {
        calls.push_back("capture " + path + " " + std::to_string(area.left) + "," + std::to_string(area.top) + " " +
                        std::to_string(area.width) + "x" + std::to_string(area.height));
        if (canCapture) {
            WriteBytes(path, BitmapFile({1, 2}, RedUnderBlue, PixelBytes::Stated));
        }
        return canCapture;
    }

    std::vector<std::string> calls;
    bool canCapture = true;

  private:
    CornerPoints points_{};
};

// In a current folder of its own, for names without one.
class Saving : public testing::Test {
  protected:
    Saving() {
        LoadImagingLibrary();
        std::filesystem::current_path(folder_.Path());
    }
    ~Saving() override {
        std::filesystem::current_path(before_);
        UnloadImagingLibrary();
    }

    std::string StartOf(const std::string& name) const { return ReadBytes(folder_ / name).substr(0, 2); }

    // The names of the files that are there.
    std::string Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string& name : names) {
            all += (all.empty() ? "" : " ") + name;
        }
        return all;
    }

    std::filesystem::path before_ = std::filesystem::current_path();
    TemporaryFolder folder_;
    RecordingCanvas canvas_;
};

TEST_F(Saving, CapturesThePicturesBoxOnceItIsShown) {
    SavePicture(canvas_, "out.png", 0);
    EXPECT_EQ(canvas_.calls, (std::vector<std::string>{"transform", "capture out1.bmp 10,10 112x93"}));
}

TEST_F(Saving, OutputIsOfTheFormatOfItsExtensionAndTheStepFileGoes) {
    for (const auto& [name, start] : {std::pair{"a.png", "\x89P"}, {"b.jpg", "\xFF\xD8"}, {"c.bmp", "BM"}}) {
        SavePicture(canvas_, name, 0);
        EXPECT_EQ(StartOf(name), start) << name;
    }
    EXPECT_EQ(Files(), "a.png b.jpg c.bmp");
}

TEST_F(Saving, StepFileIsTheOneBehindTheLast) {
    SavePicture(canvas_, "out.png", 2);
    EXPECT_EQ(canvas_.calls.back(), "capture out3.bmp 10,10 112x93");
    EXPECT_EQ(Files(), "out.png");
}

TEST_F(Saving, OutputWithAnUnknownExtensionIsABmpFile) {
    SavePicture(canvas_, "out.xyz", 0);
    EXPECT_EQ(StartOf("out.xyz"), "BM");
}

TEST_F(Saving, WithoutAnOutputNothingHappens) {
    SavePicture(canvas_, "", 0);
    EXPECT_TRUE(canvas_.calls.empty());
    EXPECT_EQ(Files(), "");
}

TEST_F(Saving, OutputThatIsThereIsReplaced) {
    WriteBytes("out.png", "old");
    SavePicture(canvas_, "out.png", 0);
    const std::string first = ReadBytes("out.png");
    EXPECT_EQ(first.substr(1, 3), "PNG");
    SavePicture(canvas_, "out.png", 0);
    EXPECT_EQ(ReadBytes("out.png"), first);
}

TEST_F(Saving, FailedCaptureLeavesTheOutput) {
    WriteBytes("out.png", "old");
    canvas_.canCapture = false;
    SavePicture(canvas_, "out.png", 0);
    EXPECT_EQ(ReadBytes("out.png"), "old");
    EXPECT_EQ(Files(), "out.png");
}

TEST_F(Saving, FailedConversionDeletesTheStepFile) {
    std::filesystem::create_directory("out.png");
    SavePicture(canvas_, "out.png", 0);
    EXPECT_EQ(canvas_.calls.size(), 2u);
    EXPECT_EQ(Files(), "out.png");
    EXPECT_TRUE(std::filesystem::is_directory("out.png"));
}

TEST_F(Saving, UsersFileOfTheStepFilesNameIsLost) {
    WriteBytes("out1.bmp", "mine");
    SavePicture(canvas_, "out.png", 0);
    EXPECT_EQ(Files(), "out.png");
}

TEST(CapturedArea, IsWhatIsAskedForWhereItHasAHeight) {
    EXPECT_EQ(CapturedArea({800, 600}, {-5, 7, 2000, 1}), (CanvasArea{-5, 7, 2000, 1}));
    EXPECT_EQ(CapturedArea({800, 600}, {3, 4, 0, 9}), (CanvasArea{3, 4, 0, 9}));
    EXPECT_EQ(CapturedArea({800, 600}, {3, 4, -7, 9}), (CanvasArea{3, 4, -7, 9}));
}

TEST(CapturedArea, IsTheWholeCanvasWithoutAHeightWhateverTheWidth) {
    EXPECT_EQ(CapturedArea({800, 600}, {5, 7, 20, 0}), (CanvasArea{0, 0, 800, 600}));
    EXPECT_EQ(CapturedArea({800, 600}, {5, 7, -20, -1}), (CanvasArea{0, 0, 800, 600}));
}

} // namespace
