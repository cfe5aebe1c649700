// How quickly the paint window follows the mouse on a large canvas, and that nothing flickers meanwhile.
#include "tests/windows/drawfixture.h"
#include "tests/windows/timing.h"

#include <atomic>
#include <thread>

namespace {

using namespace lumbrix;
using namespace tests;

class DrawSpeed : public DrawTest {
  protected:
    // With a canvas as large as the window leaves room for.
    FreeEditWindows OpenLarge() const {
        WriteBytes(program_.Folder() / "large.bmp", MakeBmp(2000, 2000, [](int x, int y) {
                       return ColorOfPicture((x + 0.5) / 2000, (y + 0.5) / 2000);
                   }));
        const FreeEditWindows opened = BeginOpen(Path("large.bmp"), Path("out.png"));
        EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(200, 100)) != RGB(255, 255, 255); }));
        opened.window.Activate();
        return opened;
    }

    static SIZE SizeOfCanvas(const DrawWindows& draw) {
        RECT client{};
        GetClientRect(draw.canvas, &client);
        return {client.right, client.bottom};
    }
};

// Far more than the two that are aimed at, for other programs run beside a test.
constexpr double MostCopiesOfARepaint = 40;

TEST_F(DrawSpeed, CanvasFollowsTheMouse) {
    const FreeEditWindows opened = OpenLarge();
    const DrawWindows draw = OpenDraw(opened);
    const SIZE size = SizeOfCanvas(draw);
    EXPECT_GT(size.cx, 1000);
    EXPECT_GT(size.cy, 800);
    const Milliseconds copy = TimeOfPlainCopy(size);
    draw.window.Click(FreehandOption);
    Press(draw, 500, 400);
    std::vector<Milliseconds> moves;
    for (int i = 0; i < 300; ++i) {
        moves.push_back(TimeOf([&] { Move(draw, 500 + (i * 37) % 400 - 200, 400 + (i * 53) % 300 - 150); }));
    }
    Release(draw);
    std::cout << "  a canvas of " << size.cx << " by " << size.cy << ", a plain copy of " << copy << " ms\n";
    Report("a move of a freehand stroke", moves, copy, MostCopiesOfARepaint);
    std::vector<Milliseconds> undone, redone;
    for (int i = 0; i < 20; ++i) {
        undone.push_back(TimeOf([&] { Send(draw.window.Window(), WM_COMMAND, UndoButton); }));
        redone.push_back(TimeOf([&] { Send(draw.window.Window(), WM_COMMAND, RedoButton); }));
    }
    Report("undoing", undone, copy, 2 * MostCopiesOfARepaint);
    Report("redoing", redone, copy, 2 * MostCopiesOfARepaint);
    CloseAll(draw, opened);
}

TEST_F(DrawSpeed, NeitherCanvasNorColorFieldsFlicker) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    const POINT places[] = {draw.On(300, 20), MiddleOf(draw.window.Item(120)),
                            MiddleOf(draw.window.Item(FillIndicator))};
    EXPECT_TRUE(WaitUntilLasting([&] {
        return PixelAt(places[0]) != RGB(255, 255, 255) && PixelAt(places[1]) == RGB(255, 0, 0) &&
               PixelAt(places[2]) == RGB(196, 193, 196);
    }));
    COLORREF before[3];
    for (int i = 0; i < 3; ++i) {
        before[i] = PixelAt(places[i]);
    }
    std::atomic<bool> isOver = false;
    int samples = 0, others = 0;
    std::thread watcher([&] {
        const HDC screen = GetDC(nullptr);
        for (; !isOver; ++samples) {
            const int i = samples % 3;
            others += GetPixel(screen, places[i].x, places[i].y) == before[i] ? 0 : 1;
        }
        ReleaseDC(nullptr, screen);
    });
    draw.window.Click(OvalOption);
    Press(draw, 40, 100);
    for (int i = 0; i < 30; ++i) {
        Move(draw, 60 + 10 * i, 120 + 5 * i);
    }
    Release(draw);
    isOver = true;
    watcher.join();
    EXPECT_GT(samples, 100);
    EXPECT_EQ(others, 0);
    CloseAll(draw, opened);
}

} // namespace
