// Handing the picture over to the paint window and taking it back, with windows that only keep a record.
#include "freeedit/handover.h"

#include "draw/drawfile.h"
#include "imaging/exports/lumbrix.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

std::string PlainBmp(Rgb color) {
    return MakeBmp(3, 2, [&](int, int) { return color; });
}

class RecordingHandOver : public HandOverView {
  public:
    explicit RecordingHandOver(CanvasTransform& transform) : transform_(transform) {}

    void ApplyTransform() override { Note("transform at " + std::to_string(transform_.settings.panX)); }
    const CornerPoints& Points() const override { return points_; }
    bool Capture(const std::string& path, const CanvasArea& area) override {
        Note("capture " + path + " " + std::to_string(area.left) + "," + std::to_string(area.top) + " " +
             std::to_string(area.width) + "x" + std::to_string(area.height));
        if (canCapture) {
            WriteBytes(path, PlainBmp(Red));
        }
        return canCapture;
    }
    void HideWindow() override { Note("hide"); }
    void ShowWindow() override { Note("show"); }
    bool Draw(const std::string& drawFile) override {
        Note("draw " + drawFile);
        return onDraw(drawFile);
    }
    void LoadCanvasImage(const std::string& path) override {
        Note("load " + path);
        loaded = std::filesystem::exists(path) ? ReadBytes(path) : "missing";
    }

    std::vector<std::string> calls;
    std::string loaded;
    bool canCapture = true;
    std::function<bool(const std::string&)> onDraw = [](const std::string&) { return false; };

  private:
    void Note(std::string call) { calls.push_back(std::move(call)); }

    CanvasTransform& transform_;
    CornerPoints points_{{{10, 60}, {97, 10}, {35, 103}}};
};

// In a current folder of its own, for names without one.
class HandingOver : public testing::Test {
  protected:
    HandingOver() {
        LoadImagingLibrary();
        std::filesystem::current_path(folder_.Path());
        transform_.settings.panX = 7;
    }
    ~HandingOver() override {
        std::filesystem::current_path(before_);
        UnloadImagingLibrary();
    }

    void HandOver(const std::string& output = "out.jpg") { HandOverToDraw(view_, transform_, output, steps_); }

    // Draws in green, and saves under the window's own name for it.
    void DrawGreen() {
        view_.onDraw = [](const std::string& drawFile) {
            std::filesystem::remove(drawFile); // which the window does
            WriteBytes(SavedDrawing(drawFile), PlainBmp(Green));
            return true;
        };
    }

    static std::set<std::string> Files() {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(".")) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    static Rgb ColorOf(const std::string& bytes) { return BmpView(bytes).At(1, 1); }

    std::filesystem::path before_ = std::filesystem::current_path();
    TemporaryFolder folder_;
    CanvasTransform transform_;
    StepFiles steps_;
    RecordingHandOver view_{transform_};
};

using Names = std::set<std::string>;

TEST_F(HandingOver, GoesThroughItsStepsInOrder) {
    HandOver();
    EXPECT_EQ(view_.calls,
              (std::vector<std::string>{"hide", "transform at 7", "capture out1.bmp 10,10 112x93", "draw out2.bmp",
                                        "load out1.bmp", "show", "transform at 6", "transform at 7"}));
    EXPECT_EQ(steps_.counter, 3);
}

TEST_F(HandingOver, CaptureLiesUnderTwoNamesWhileItIsDrawnOn) {
    view_.onDraw = [](const std::string& drawFile) {
        EXPECT_EQ(Files(), (Names{"out1.bmp", "out2.bmp"}));
        EXPECT_EQ(ReadBytes(drawFile), ReadBytes("out1.bmp"));
        EXPECT_EQ(ColorOf(ReadBytes(drawFile)), Red);
        return false;
    };
    HandOver();
}

TEST_F(HandingOver, FirstBringsTheDrawingBack) {
    DrawGreen();
    HandOver();
    EXPECT_EQ(ColorOf(view_.loaded), Green);
    EXPECT_EQ(Files(), Names{"out1.bmp"});
}

TEST_F(HandingOver, DrawingThatIsNotSavedLeavesTheCapture) {
    view_.onDraw = [](const std::string&) {
        WriteBytes("out3.bmp", PlainBmp(Green));
        return false;
    };
    HandOver();
    EXPECT_EQ(ColorOf(view_.loaded), Red);
    EXPECT_EQ(Files(), Names{"out1.bmp"});
}

TEST_F(HandingOver, SecondLosesTheDrawing) {
    DrawGreen();
    HandOver();
    view_.calls.clear();
    HandOver();
    EXPECT_EQ(view_.calls[2], "capture out4.bmp 10,10 112x93");
    EXPECT_EQ(view_.calls[3], "draw out5.bmp");
    EXPECT_EQ(view_.calls[4], "load out4.bmp");
    EXPECT_EQ(ColorOf(view_.loaded), Red);
    EXPECT_EQ(Files(), (Names{"out1.bmp", "out3.bmp", "out4.bmp"}));
    EXPECT_EQ(steps_.counter, 6);
}

TEST_F(HandingOver, WithoutAnOutputNumbersAloneAreNames) {
    HandOver("");
    EXPECT_EQ(view_.calls[3], "draw 2.bmp");
    EXPECT_EQ(Files(), Names{"1.bmp"});
}

TEST_F(HandingOver, FailedCaptureStillComesToItsEnd) {
    view_.canCapture = false;
    HandOver();
    EXPECT_EQ(view_.loaded, "missing");
    EXPECT_EQ(view_.calls.back(), "transform at 7");
    EXPECT_EQ(steps_.counter, 3);
    EXPECT_EQ(Files(), Names{});
}

} // namespace
