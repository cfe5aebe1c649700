// A test with the paint window open in the running program, reached through Free Edit.
#pragma once

#include "draw/drawlayout.h"
#include "draw/textentrylayout.h"
#include "tests/windows/freeeditfixture.h"

namespace tests {

using namespace lumbrix::drawwindow;

// A picture in this process that the same can be drawn on as in the program.
class OwnCanvas {
  public:
    explicit OwnCanvas(const BmpView& shown) : width_(shown.Width()), height_(shown.Height()) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        context_ = CreateCompatibleDC(nullptr);
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
        before_ = SelectObject(context_, bitmap_);
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                const Rgb color = shown.At(x, y);
                pixels_[y * width_ + x] = static_cast<std::uint32_t>(color.red) << 16 |
                                          static_cast<std::uint32_t>(color.green) << 8 | color.blue;
            }
        }
        SelectObject(context_, GetStockObject(NULL_BRUSH));
    }
    ~OwnCanvas() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    OwnCanvas(const OwnCanvas&) = delete;
    OwnCanvas& operator=(const OwnCanvas&) = delete;

    HDC Context() const { return context_; }

    // From here on in this pen and brush; both stay until the end of the process.
    void Use(HPEN pen, HBRUSH brush) const {
        SelectObject(context_, pen);
        SelectObject(context_, brush);
    }

    void Line(POINT from, POINT to) const {
        MoveToEx(context_, from.x, from.y, nullptr);
        LineTo(context_, to.x, to.y);
    }

    int DifferencesFrom(const BmpView& seen) const {
        GdiFlush();
        int differences = 0;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                const std::uint32_t pixel = pixels_[y * width_ + x];
                const Rgb expected{static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
                                   static_cast<std::uint8_t>(pixel)};
                differences += seen.At(x, y) == expected ? 0 : 1;
            }
        }
        return differences;
    }

  private:
    int width_;
    int height_;
    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
    std::uint32_t* pixels_ = nullptr;
};

struct DrawWindows {
    OpenWindow window;
    HWND canvas;

    POINT On(int x, int y) const { return ScreenPointOf(canvas, {x, y}); }
    BmpView Seen() const { return BmpView(ScreenBitmapOf(canvas)); }
    std::string Status() const { return window.Text(StatusLabel); }
};

class DrawTest : public FreeEditTest {
  protected:
    DrawWindows OpenDraw(const FreeEditWindows& opened) const {
        PressLabel(opened, DrawLabel);
        return Opened(opened);
    }

    // The window that is about to open.
    DrawWindows Opened(const FreeEditWindows& opened) const {
        const HWND window = WaitForTop([](HWND top) { return WindowText(top) == "Draw"; });
        const OpenWindow draw(window, {program_.Window(), opened.window.Window(), opened.canvas});
        draw.Activate();
        return {draw, draw.Item(DrawCanvas)};
    }

    // With nothing on the canvas.
    DrawWindows OpenBlank(const FreeEditWindows& opened) const {
        const DrawWindows draw = OpenDraw(opened);
        draw.window.Click(ClearButton);
        EXPECT_TRUE(WaitFor([&] { return IsAllWhite(draw.Seen()); }));
        return draw;
    }

    // Comes back when the window has worked off what was brought about.
    static void Settle(const DrawWindows& draw) {
        Send(draw.window.Window(), WM_NULL);
        Send(draw.canvas, WM_NULL);
    }

    static void Drag(const DrawWindows& draw, POINT from, POINT to) {
        DragMouse(draw.On(from.x, from.y), draw.On(to.x, to.y));
        Settle(draw);
    }

    // The three messages of a gesture, where the mouse itself would be too slow or too inexact.
    static void Press(const DrawWindows& draw, int x, int y) {
        Send(draw.canvas, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    }
    static void Move(const DrawWindows& draw, int x, int y) {
        Send(draw.canvas, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y));
    }
    static void Release(const DrawWindows& draw) { Send(draw.canvas, WM_LBUTTONUP); }
    static void Stroke(const DrawWindows& draw, POINT from, POINT to) {
        Press(draw, from.x, from.y);
        Move(draw, to.x, to.y);
        Release(draw);
    }

    static void Choose(const DrawWindows& draw, int list, int item) {
        Send(draw.window.Item(list), CB_SETCURSEL, static_cast<WPARAM>(item));
        Send(draw.window.Window(), WM_COMMAND, MAKEWPARAM(list, CBN_SELENDOK),
             reinterpret_cast<LPARAM>(draw.window.Item(list)));
    }

    // Presses a colour field with the right button. The mouse is moved there, for the window looks for what lies below
    // the place.
    static void ChooseFillColor(const DrawWindows& draw, int field) {
        const POINT place = MiddleOf(draw.window.Item(field));
        MoveMouse(place);
        POINT client = place;
        ScreenToClient(draw.window.Window(), &client);
        Send(draw.window.Window(), WM_PARENTNOTIFY, WM_RBUTTONDOWN, MAKELPARAM(client.x, client.y));
    }

    // That the screen shows exactly what is expected.
    static void ExpectCanvas(const DrawWindows& draw, const OwnCanvas& expected) {
        int differences = 0;
        EXPECT_TRUE(WaitFor([&] { return (differences = expected.DifferencesFrom(draw.Seen())) == 0; }, 3000))
            << differences << " pixels differ";
    }

    static void CloseDraw(const DrawWindows& draw, int button = QuitButton) {
        draw.window.BeginClick(button);
        draw.window.WaitUntilGone();
    }

    // Ends the paint window; the other one comes back.
    static void ComeBack(const DrawWindows& draw, const FreeEditWindows& opened, int button = QuitButton) {
        CloseDraw(draw, button);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
        opened.window.Activate();
    }

    // Ends both windows.
    void CloseAll(const DrawWindows& draw, const FreeEditWindows& opened) const {
        CloseDraw(draw);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
        Close(opened);
    }
};

} // namespace tests
