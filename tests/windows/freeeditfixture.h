// A test with the Free Edit window open in the running program, on a picture whose colours tell places.
#pragma once

#include "base/geometry.h"
#include "freeedit/transformlayout.h"
#include "tests/support/picturefiles.h"
#include "tests/windows/mouse.h"
#include "tests/windows/programfixture.h"
#include "tests/windows/seenwindow.h"

#include <commctrl.h>

#include <cmath>

namespace tests {

using namespace lumbrix::transformwindow;

// The window, and the canvas that lies above it.
struct FreeEditWindows {
    OpenWindow window;
    HWND canvas;

    POINT OnCanvas(int x, int y) const { return ScreenPointOf(canvas, {x, y}); }
    BmpView SeenCanvas() const { return BmpView(ScreenBitmapOf(canvas)); }
    SIZE CanvasSize() const {
        RECT client{};
        GetClientRect(canvas, &client);
        return {client.right, client.bottom};
    }
};

class FreeEditTest : public ProgramTest {
  protected:
    static constexpr int PictureWidth = 640;
    static constexpr int PictureHeight = 480;

    // The picture's size in dialog units, which is how large it comes up.
    static constexpr int UnitsWidth = 426;
    static constexpr int UnitsHeight = 320;

    FreeEditTest() {
        LoadImagingLibrary();
        WriteBytes(program_.Folder() / "picture.bmp", MakeBmp(PictureWidth, PictureHeight, [](int x, int y) {
                       return ColorOfPicture((x + 0.5) / PictureWidth, (y + 0.5) / PictureHeight);
                   }));
    }
    ~FreeEditTest() override { UnloadImagingLibrary(); }

    // By how far a place is from the left and from the top; never white.
    static Rgb ColorOfPicture(double across, double down) {
        return {static_cast<std::uint8_t>(40 + std::lround(160 * across)),
                static_cast<std::uint8_t>(40 + std::lround(160 * down)), 90};
    }

    FreeEditWindows BeginOpen(const std::string& source, const std::string& target) const {
        MoveMouse({640, 500}); // away from the bar
        program_.SetText(SourceFileBox, source);
        program_.SetText(TargetBox, target);
        program_.BeginClick(FreeEditButton);
        return Opened();
    }

    FreeEditWindows Opened() const {
        const HWND window = WaitForTop([](HWND top) { return WindowText(top) == "Change your image"; });
        const HWND canvas =
            WaitForTop([&](HWND top) { return GetWindow(top, GW_OWNER) == window && WindowText(top).empty(); });
        return {OpenWindow(window, {program_.Window(), canvas}), canvas};
    }

    // With the picture on the canvas.
    FreeEditWindows Open(const std::string& target = "out.png") const {
        FreeEditWindows opened = BeginOpen(Path("picture.bmp"), Path(target));
        EXPECT_TRUE(WaitFor([&] { return ShowsPicture(opened); }));
        opened.window.Activate();
        Settle(opened);
        return opened;
    }

    // Whether the screen shows the picture as it comes up, judged by one place.
    static bool ShowsPicture(const FreeEditWindows& opened) {
        const COLORREF seen = PixelAt(opened.OnCanvas(200, 100));
        return IsNear({GetRValue(seen), GetGValue(seen), GetBValue(seen)},
                      ColorOfPicture(200.5 / UnitsWidth, 100.5 / UnitsHeight));
    }

    // Comes back when the windows have worked off all that was brought about.
    static void Settle(const FreeEditWindows& opened) {
        Send(opened.window.Window(), WM_NULL);
        Send(opened.window.Window(), WM_NULL); // what the first one posted
    }

    void Close(const FreeEditWindows& opened) const {
        opened.window.Close();
        opened.window.WaitUntilGone();
        WaitForTheEnd();
    }

    // As the end of a drag.
    static void SetSlider(const FreeEditWindows& opened, int slider, int position) {
        Send(opened.window.Item(slider), TBM_SETPOS, TRUE, position);
        SendSlider(opened, slider, TB_ENDTRACK);
    }
    static void SendSlider(const FreeEditWindows& opened, int slider, int code) {
        Send(opened.window.Window(), WM_HSCROLL, MAKEWPARAM(code, 0),
             reinterpret_cast<LPARAM>(opened.window.Item(slider)));
    }
    // What a scroll bar of the canvas answers, which it does within its program only.
    static SCROLLINFO ScrollBarOf(const FreeEditWindows& opened, int bar) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        const std::uint32_t inside = opened.window.PutInside(&info, sizeof info);
        const auto canvas = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(opened.canvas));
        EXPECT_NE(
            opened.window.CallInside("user32.dll", "GetScrollInfo", {canvas, static_cast<std::uint32_t>(bar), inside}),
            0u);
        opened.window.GetFromInside(inside, &info, sizeof info);
        opened.window.CallInside("kernel32.dll", "GlobalFree", {inside});
        return info;
    }

    static void Scroll(const FreeEditWindows& opened, UINT message, int code, int thumb = 0) {
        Send(opened.canvas, message, MAKEWPARAM(code, thumb), 0);
    }

    // Presses a label with the real mouse, which moves there first.
    static void PressLabel(const FreeEditWindows& opened, int label) {
        // Never twice on one place: the second press of a double click is none.
        static bool isLeft = false;
        isLeft = !isLeft;
        const POINT middle = MiddleOf(opened.window.Item(label));
        MoveMouse({middle.x + (isLeft ? -10 : 10), middle.y});
        EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, label) == RGB(87, 87, 87); })) << "is not lit";
        PressMouse();
        ReleaseMouse();
    }

    // What the screen shows in a corner of a label, where there is no text.
    static COLORREF BackgroundOf(const FreeEditWindows& opened, int label) {
        return PixelAt(ScreenPointOf(opened.window.Item(label), {4, 4}));
    }

    void Save(const FreeEditWindows& opened) const {
        PressLabel(opened, SaveLabel);
        Settle(opened);
    }

    // How many places of a picture do not show ours through three points, which are in its own pixels, on white; judged
    // some way off the borders. The colours are worked out here, place by place.
    static int FaultsOf(const BmpView& seen, const lumbrix::CornerPoints& points) {
        const double ax = points[1].x - points[0].x, ay = points[1].y - points[0].y;
        const double bx = points[2].x - points[0].x, by = points[2].y - points[0].y;
        const double determinant = ax * by - ay * bx;
        int inside = 0, faults = 0;
        for (int y = 0; y < seen.Height(); y += 3) {
            for (int x = 0; x < seen.Width(); x += 3) {
                const double dx = x + 0.5 - points[0].x, dy = y + 0.5 - points[0].y;
                const double across = (dx * by - dy * bx) / determinant;
                const double down = (ax * dy - ay * dx) / determinant;
                const double least = std::min({across, down, 1 - across, 1 - down});
                if (least > 0.02) {
                    ++inside;
                    faults += IsNear(seen.At(x, y), ColorOfPicture(across, down)) ? 0 : 1;
                } else if (least < -0.02) {
                    faults += seen.At(x, y) == White ? 0 : 1;
                }
            }
        }
        EXPECT_GT(inside, 500);
        return faults;
    }

    static void ExpectPictureAt(const BmpView& seen, const lumbrix::CornerPoints& points) {
        EXPECT_EQ(FaultsOf(seen, points), 0);
    }

    // The same for what the screen shows, waited for.
    static void ExpectShown(const FreeEditWindows& opened, const lumbrix::CornerPoints& points) {
        int faults = 0;
        EXPECT_TRUE(WaitFor([&] { return (faults = FaultsOf(opened.SeenCanvas(), points)) == 0; }, 5000))
            << faults << " places are not as they should be";
    }

    static bool IsNear(Rgb one, Rgb other) {
        constexpr int Difference = 3;
        return std::abs(one.red - other.red) <= Difference && std::abs(one.green - other.green) <= Difference &&
               std::abs(one.blue - other.blue) <= Difference;
    }

    static void ExpectWhite(const FreeEditWindows& opened) {
        EXPECT_TRUE(WaitFor([&] { return IsAllWhite(opened.SeenCanvas()); }, 5000)) << "something is on the canvas";
    }

    static bool IsAllWhite(const BmpView& seen) { return seen.CountOthers(White) == 0; }

    DWORD Process() const {
        DWORD process = 0;
        GetWindowThreadProcessId(program_.Window(), &process);
        return process;
    }

    HWND WaitForTop(const std::function<bool(HWND)>& fits) const {
        HWND found = nullptr;
        EXPECT_TRUE(WaitFor([&] { return (found = FindTopWindow(Process(), fits)) != nullptr; }));
        return found;
    }
};

} // namespace tests
