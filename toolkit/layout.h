// Windows as data: what a window and each of its controls is, without a word about how they are made.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lumbrix {

// The kinds of control that windows are made of.
enum class ControlKind {
    Label,
    TextBox,
    DigitsBox,    // a text box that takes digits only
    MultiLineBox, // a text box of several lines, in which the Enter key begins one
    PushButton,
    CheckBox,
    RadioButton,
    Frame,
    DropDownList, // its height is that of the box with its list open
    TrackBar,
    Graphic,     // drawn by its window
    PictureList, // a list view of icons, for the picture behind it
};

// A colour as the platform packs it: blue, green and red from the top down.
using WindowColor = std::uint32_t;

constexpr WindowColor ColorOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return red | static_cast<WindowColor>(green) << 8 | static_cast<WindowColor>(blue) << 16;
}

inline constexpr WindowColor Cyan = 0xFFFF00;
inline constexpr WindowColor Black = 0x000000;
inline constexpr WindowColor Red = 0x0000FF;
inline constexpr WindowColor SystemColor = 0xFFFFFFFF; // none is set

inline constexpr int NoFont = -1; // the one of the platform's dialogs stays

// Styles beside those of the kind, under the platform's numbers.
inline constexpr std::uint32_t StartsGroup = 0x00020000;        // WS_GROUP
inline constexpr std::uint32_t TextAtLeft = 0x00000100;         // BS_LEFT
inline constexpr std::uint32_t TextInTheMiddle = 0x00000C00;    // BS_VCENTER
inline constexpr std::uint32_t ClipsSiblings = 0x04000000;      // WS_CLIPSIBLINGS: never draws over those above it
inline constexpr std::uint32_t Bordered = 0x00800000;           // WS_BORDER
inline constexpr std::uint32_t LabelCentered = 0x00000001;      // SS_CENTER
inline constexpr std::uint32_t LabelAtRight = 0x00000002;       // SS_RIGHT
inline constexpr std::uint32_t LabelTakesMouse = 0x00000100;    // SS_NOTIFY; without it the mouse passes through
inline constexpr std::uint32_t LabelInTheMiddle = 0x00000200;   // SS_CENTERIMAGE
inline constexpr std::uint32_t LabelSunken = 0x00001000;        // SS_SUNKEN
inline constexpr std::uint32_t ShowsSelectedRange = 0x00000020; // TBS_ENABLESELRANGE

// A label painted as a button, together with StaticEdge.
inline constexpr std::uint32_t LabelAsButton = Bordered | LabelCentered | LabelInTheMiddle | LabelSunken;

// Extended styles of controls and windows.
inline constexpr std::uint32_t SeeThrough = 0x00000020;  // WS_EX_TRANSPARENT
inline constexpr std::uint32_t StaticEdge = 0x00020000;  // WS_EX_STATICEDGE
inline constexpr std::uint32_t ClientEdge = 0x00000200;  // WS_EX_CLIENTEDGE
inline constexpr std::uint32_t AlwaysOnTop = 0x00000008; // WS_EX_TOPMOST

// Positions and sizes are in dialog units. A row of a table refers to its caption, a layout that is worked out owns it.
template <class Text> struct BasicControl {
    int id;
    ControlKind kind;
    Text caption;
    int x;
    int y;
    int width;
    int height;
    int font = 0; // index into the window's fonts, or NoFont
    WindowColor background = SystemColor;
    std::uint32_t extraStyle = 0;
    WindowColor text = SystemColor; // labels and boxes to check only
    std::uint32_t extraExtendedStyle = 0;
};

using Control = BasicControl<const char*>;
using OwnedControl = BasicControl<std::string>;

enum class FontLines {
    None,
    Underline,
};

enum class FontSlant {
    Upright,
    Italic,
};

struct WindowFont {
    const char* face;
    int points;
    int weight; // 400 is regular, 700 bold
    FontSlant slant = FontSlant::Upright;
    FontLines lines = FontLines::None;
};

// Styles of windows, under the platform's numbers. A fixed dialog is a popup with a caption and a modal frame,
// clipping, with its own font, three-dimensional, made even where a control cannot be.
inline constexpr std::uint32_t FixedDialog =
    0x80000000 | 0x04000000 | 0x00C00000 | 0x80 | 0x40 | 0x10 | 0x04; // WS_POPUP and on
inline constexpr std::uint32_t BareWindow = 0x80000000 | 0x10000000;  // WS_POPUP and WS_VISIBLE, nothing around it
inline constexpr std::uint32_t Centered = 0x0800;                     // DS_CENTER
inline constexpr std::uint32_t HasSystemMenu = 0x00080000;            // WS_SYSMENU, and with it the close box
inline constexpr std::uint32_t HasMinimizeBox = 0x00020000;           // WS_MINIMIZEBOX
inline constexpr std::uint32_t HasMaximizeBox = 0x00010000;           // WS_MAXIMIZEBOX

// Extended: the keyboard goes through the controls, and the frame has a raised edge.
inline constexpr std::uint32_t DialogFrame = 0x00010000 | 0x00000100;

// A window as a table. The controls are created in its order, which is also the tab order. The first font, if there is
// one, is the window's own.
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

// The same for a window that is worked out at run time, or changes then.
struct OwnedLayout {
    OwnedLayout() = default;
    explicit OwnedLayout(const WindowLayout& table)
        : caption(table.caption), x(table.x), y(table.y), width(table.width), height(table.height), style(table.style),
          extendedStyle(table.extendedStyle), background(table.background),
          fonts(table.fonts.begin(), table.fonts.end()) {
        for (const Control& row : table.controls) {
            controls.push_back({row.id, row.kind, row.caption, row.x, row.y, row.width, row.height, row.font,
                                row.background, row.extraStyle, row.text, row.extraExtendedStyle});
        }
    }

    std::string caption;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    std::uint32_t style = 0;
    std::uint32_t extendedStyle = 0;
    WindowColor background = SystemColor;
    std::vector<WindowFont> fonts;
    std::vector<OwnedControl> controls;
};

// The row of a control; null where there is none of this id.
template <class Rows> constexpr auto FindRow(Rows& rows, int id) {
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const auto& each) { return each.id == id; });
    return row == std::end(rows) ? nullptr : &*row;
}

// A font's height for the platform: minus points times the screen's dots per inch, divided by 72 in whole numbers.
constexpr int FontHeight(int points, int dotsPerInch) { return -(points * dotsPerInch) / 72; }

// Pixels as dialog units, rounded down, where 1024 units are so many pixels.
constexpr int UnitsOfPixels(int pixels, int pixelsOf1024Units) {
    const std::int64_t scaled = std::int64_t{pixels} * 1024;
    const std::int64_t units = scaled / pixelsOf1024Units;
    return static_cast<int>(units - (scaled % pixelsOf1024Units < 0 ? 1 : 0));
}

} // namespace lumbrix
