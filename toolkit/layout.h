// Windows as data: what a window and each of its controls is, without a word about how they are made.
#pragma once

#include <cstdint>
#include <span>

namespace lumbrix {

// The kinds of control that windows are made of.
enum class ControlKind {
    Label,
    TextBox,
    PushButton,
    CheckBox,
    RadioButton,
    Frame,
};

// A colour as the platform packs it: blue, green and red from the top down.
using WindowColor = std::uint32_t;

inline constexpr WindowColor Cyan = 0xFFFF00;
inline constexpr WindowColor SystemColor = 0xFFFFFFFF; // none is set

// Styles beside those of the kind, under the platform's numbers.
inline constexpr std::uint32_t StartsGroup = 0x00020000;     // WS_GROUP
inline constexpr std::uint32_t TextAtLeft = 0x00000100;      // BS_LEFT
inline constexpr std::uint32_t TextInTheMiddle = 0x00000C00; // BS_VCENTER

// Positions and sizes are in dialog units.
struct Control {
    int id;
    ControlKind kind;
    const char* caption;
    int x;
    int y;
    int width;
    int height;
    int font = 0;                         // index into the window's fonts
    WindowColor background = SystemColor; // the text keeps its default colour
    std::uint32_t extraStyle = 0;
};

struct WindowFont {
    const char* face;
    int points;
    int weight; // 400 is regular, 700 bold
};

// The controls are created in the order of their table, which is also the tab order. The first font is the window's
// own.
struct WindowLayout {
    const char* caption;
    int x;
    int y;
    int width;
    int height;
    std::uint32_t style;
    std::uint32_t extendedStyle;
    WindowColor background;
    std::span<const WindowFont> fonts;
    std::span<const Control> controls;
};

// A font's height for the platform: minus points times the screen's dots per inch, divided by 72 in whole numbers.
constexpr int FontHeight(int points, int dotsPerInch) { return -(points * dotsPerInch) / 72; }

} // namespace lumbrix
