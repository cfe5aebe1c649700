// A window of the running program held against its table.
#pragma once

#include "tests/windows/openwindow.h"
#include "toolkit/layout.h"

namespace tests {

class TabledWindow {
  public:
    explicit TabledWindow(const OpenWindow& window) : window_(window) {}

    // That the controls are those of the table, in its order, each of its kind, where and what it should be. The texts
    // of boxes and whether something is shown are left to the caller.
    void ExpectControls(std::span<const lumbrix::Control> controls) const;

    // The caption, the size inside the frame, and the place in the middle of the screen.
    void ExpectFrame(const lumbrix::WindowLayout& layout) const;

    // That the area inside the frame is of this size, in dialog units.
    void ExpectSize(int width, int height) const;

    // The font of a control.
    LOGFONTA FontOf(int id) const;

    // Sends a message from within the program, for answers that mean something only there.
    std::uint32_t Ask(HWND window, UINT message, std::uint32_t argument = 0) const;

    // Dialog units as pixels, each number on its own, rounded to the nearest.
    RECT InPixels(const RECT& units) const;

  private:
    void ExpectControl(const lumbrix::Control& control, HWND item) const;

    // A control's rectangle relative to the window's client area, in pixels.
    RECT PlaceOf(HWND item) const;

    OpenWindow window_;
};

} // namespace tests
