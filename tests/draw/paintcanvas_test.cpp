// When the control of the canvas shows what is drawn on the picture behind it.
#include "draw/paintcanvas.h"

#include "draw/tools.h"
#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr COLORREF WhiteShown = RGB(255, 255, 255);
constexpr COLORREF RedShown = RGB(255, 0, 0);
constexpr PixelPoint Watched{20, 20};

class PaintedCanvas : public testing::Test {
  protected:
    PaintedCanvas() {
        canvas_.TakePlace(control_.Handle());
        state_.penWidth = 9;
    }
    ~PaintedCanvas() override { canvas_.LeaveControl(); }

    COLORREF Shown() const { return control_.PixelAt(Watched.x, Watched.y); }

    // Each draws over the place that is watched.
    std::vector<std::pair<const char*, std::function<void()>>> WaysToDraw() {
        return {
            {"line",
             [this] {
                 canvas_.MoveTo({5, 20});
                 canvas_.LineTo({40, 20}, RedShown);
             }},
            {"shape",
             [this] {
                 canvas_.PutShape({{20, 5}, {60, 40}, 0, RedShown, NoFill, SolidFill});
             }},
            {"area", [this] { canvas_.FillArea(Watched, WhiteShown, BrushOf(FillValueOf(RedShown), SolidFill)); }},
            {"clear", [this] { canvas_.ClearWith(RedShown); }},
        };
    }

    OwnWindow control_{100, 60};
    DrawingState state_;
    PaintCanvas canvas_{state_, {[](const std::string&) {}, [] {}, [](std::string&) {}}};
};

TEST_F(PaintedCanvas, BeginsWhite) {
    EXPECT_EQ(canvas_.PixelAt({0, 0}), WhiteShown);
    EXPECT_EQ(canvas_.PixelAt({99, 59}), WhiteShown);
    EXPECT_EQ(Shown(), WhiteShown);
}

TEST_F(PaintedCanvas, ShowsEachThingAtOnceUnlessItIsHeldBack) {
    for (const auto& [name, draw] : WaysToDraw()) {
        canvas_.Attach(Painting::AtOnce);
        canvas_.ClearWith(WhiteShown);
        EXPECT_EQ(Shown(), WhiteShown) << name;
        draw();
        EXPECT_EQ(Shown(), RedShown) << name;
    }
}

TEST_F(PaintedCanvas, ShowsWhatIsHeldBackAtTheNextRepaint) {
    for (const auto& [name, draw] : WaysToDraw()) {
        canvas_.Attach(Painting::AtOnce);
        canvas_.ClearWith(WhiteShown);
        canvas_.Attach(Painting::HeldBack);
        draw();
        EXPECT_EQ(Shown(), WhiteShown) << name;
        canvas_.Repaint();
        EXPECT_EQ(Shown(), RedShown) << name;
    }
}

TEST_F(PaintedCanvas, HoldsTextBackToo) {
    const auto countOfShown = [&] {
        int count = 0;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 100; ++x) {
                count += control_.PixelAt(x, y) == WhiteShown ? 0 : 1;
            }
        }
        return count;
    };
    canvas_.Attach(Painting::HeldBack);
    canvas_.PutText({5, 5}, "HHH", RedShown);
    EXPECT_EQ(countOfShown(), 0);
    canvas_.Repaint();
    const int first = countOfShown();
    EXPECT_GT(first, 10);
    canvas_.Attach(Painting::AtOnce);
    canvas_.PutText({5, 30}, "HHH", RedShown);
    EXPECT_EQ(countOfShown(), 2 * first);
}

TEST_F(PaintedCanvas, HoldsBackFromThePressOfAToolOn) {
    canvas_.Attach(Painting::AtOnce);
    state_.currentTool = drawwindow::SquareBoxOption;
    PressTool(state_, canvas_, {5, 5});
    canvas_.MoveTo({5, 5});
    canvas_.LineTo({40, 40}, RedShown);
    EXPECT_EQ(Shown(), WhiteShown);
    canvas_.Repaint();
    EXPECT_EQ(Shown(), RedShown);
    ReleaseTool(state_, canvas_);
}

} // namespace
