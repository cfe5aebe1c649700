// A window of the running program held against what is expected of it.
#pragma once

#include "tests/windows/expected/expectedwindow.h"
#include "tests/windows/openwindow.h"

#include <cstdint>
#include <string>

namespace tests {

class SeenWindow {
  public:
    explicit SeenWindow(const OpenWindow& window) : window_(window) {}

    // That the window and its controls are what is expected: captions, styles, places in pixels, fonts, colours, what
    // is shown, and the order. The texts of boxes are left to the caller, and the
    // font of the window itself is not looked at: a dialog does not answer for it everywhere.
    void Expect(const ExpectedWindow& expected) const;

    // Sends a message from within the program, for answers that mean something only there.
    std::uint32_t Ask(HWND window, UINT message, std::uint32_t argument = 0) const;

    // The font that a window answers for its own.
    LOGFONTA FontOf(HWND window) const;

    // Dialog units as pixels, each number on its own, rounded to the nearest.
    static ExpectedPlace InPixels(const ExpectedPlace& units);

  private:
    void ExpectFrame(const ExpectedWindow& expected) const;
    void ExpectPosition(ExpectedPosition position) const;
    std::string Row(const ExpectedControl& control, HWND item) const;

    // Fonts and colours in words.
    std::string FontWordsOf(HWND window) const;
    std::string ColorsOf(HWND item, UINT question) const;

    // What a handle of the drawing system stands for.
    template <class Description> Description ObjectOf(std::uint32_t handle) const;

    OpenWindow window_;
};

} // namespace tests
