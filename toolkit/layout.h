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
    PictureList, // a list view of icons, for the picture behind it
};

// A colour as the platform packs it: blue, green and red from the top down.
using WindowColor = std::uint32_t;

inline constexpr WindowColor Cyan = 0xFFFF00;
inline constexpr WindowColor Black = 0x000000;
inline constexpr WindowColor Red = 0x0000FF;
inline constexpr WindowColor SystemColor = 0xFFFFFFFF; // none is set

inline constexpr int NoFont = -1; // the one of the platform's dialogs stays

// Styles beside those of the kind, under the platform's numbers.
inline constexpr std::uint32_t StartsGroup = 0x00020000;     // WS_GROUP
inline constexpr std::uint32_t TextAtLeft = 0x00000100;      // BS_LEFT
inline constexpr std::uint32_t ClipsSiblings = 0x04000000;   // WS_CLIPSIBLINGS: never draws over those above it
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
    int font = 0; // index into the window's fonts, or NoFont
    WindowColor background = SystemColor;
    std::uint32_t extraStyle = 0;
    WindowColor text = SystemColor; // labels and boxes to check only
};

struct WindowFont {
    const char* face;
    int points;
    int weight; // 400 is regular, 700 bold
};

// Styles of windows, under the platform's numbers. A fixed dialog is a popup with a caption and a modal frame,
// clipping, with its own font, three-dimensional, made even where a control cannot be.
inline constexpr std::uint32_t FixedDialog =
    0x80000000 | 0x04000000 | 0x00C00000 | 0x80 | 0x40 | 0x10 | 0x04; // WS_POPUP and on
inline constexpr std::uint32_t Centered = 0x0800;                     // DS_CENTER
inline constexpr std::uint32_t HasSystemMenu = 0x00080000;            // WS_SYSMENU, and with it the close box
inline constexpr std::uint32_t HasMinimizeBox = 0x00020000;           // WS_MINIMIZEBOX
inline constexpr std::uint32_t HasMaximizeBox = 0x00010000;           // WS_MAXIMIZEBOX

// Extended: the keyboard goes through the controls, and the frame has a raised edge.
inline constexpr std::uint32_t DialogFrame = 0x00010000 | 0x00000100;

// The controls are created in the order of their table, which is also the tab order. The first font, if there is one,
// is the window's own.
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
