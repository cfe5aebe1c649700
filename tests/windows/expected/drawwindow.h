// What the paint window must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

#include <array>

namespace tests {

// As the platform packs them: blue, green, red.
inline constexpr std::array<std::uint32_t, 32> ExpectedPalette{
    0x000000, 0x000080, 0x008000, 0x008080, 0xC40000, 0x800080, 0x804000, 0xC4C1C4, 0x808080, 0x0000FF, 0x00FF00,
    0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF, 0xA4A4A4, 0x80A0FF, 0xA0FFA0, 0xA0FFFF, 0xFFA0A0, 0xFFA0FF,
    0xFFFFA0, 0xD4D4D4, 0xB4B4B4, 0xBCDCFF, 0xDCFFDC, 0xDCFFFF, 0xFFDCDC, 0xFFDCFF, 0xFFFFDC, 0xE4E4E4,
};

inline const std::vector<std::string> ExpectedPatterns{"Hollow",         "Solid",           "Horizontal lines",
                                                       "Vertical lines", "Upward diagonal", "Downward diagonal",
                                                       "Crossed lines",  "Diagonal crossed"};
inline const std::vector<std::string> ExpectedPenWidths{
    "Pen width =   1", "Pen width =   2", "Pen width =   3", "Pen width =   4", "Pen width =   5",
    "Pen width =   6", "Pen width =   7", "Pen width =   8", "Pen width =   9", "Pen width = 10"};
inline const std::vector<std::string> ExpectedPenTypes{"Pen type = Solid", "Pen type = Dash", "Pen type = Dot",
                                                       "Pen type = DashDot", "Pen type = DashDotDot"};

// Of the screen and of the canvas, in dialog units.
struct ExpectedDrawSizes {
    int width;
    int height;
    int canvasWidth;
    int canvasHeight;
};

inline ExpectedWindow ExpectedDrawWindow(const ExpectedDrawSizes& sizes) {
    using enum ExpectedKind;
    constexpr std::uint32_t Notifies = 0x100;
    constexpr std::uint32_t Sunken = 0x1000;
    constexpr std::uint32_t ClientEdge = 0x200;
    const int right = sizes.width;
    const int bottom = sizes.height;
    ExpectedWindow window{
        .caption = "Draw",
        .place = {0, 0, right, bottom},
        .style = 0x84C808D4,
        .extendedStyle = 0x00010100,
        .background = SystemsColor,
        .font = SystemsFont,
        .position = ExpectedPosition::Anywhere,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {101, Graphic, "", {4, 4, sizes.canvasWidth, sizes.canvasHeight}, SystemsFont, SystemsColor, SystemsColor, false, Notifies, ClientEdge},
            {171, Frame, "&Draw", {right - 95, 1, 90, 170}},
            {181, RadioButton, "Line ", {right - 93, 11, 75, 10}},
            {182, RadioButton, "Freehand ", {right - 93, 21, 75, 10}},
            {183, RadioButton, "Beams ", {right - 93, 31, 75, 10}},
            {184, RadioButton, "Rounded Box ", {right - 93, 41, 75, 10}},
            {185, RadioButton, "Square Box ", {right - 93, 51, 75, 10}},
            {186, RadioButton, "Circle ", {right - 93, 61, 75, 10}},
            {187, RadioButton, "Oval ", {right - 93, 71, 75, 10}},
            {188, RadioButton, "Fill area ", {right - 93, 81, 75, 10}},
            {189, RadioButton, "Text normal ", {right - 93, 91, 75, 10}},
            {190, RadioButton, "Text sunken ", {right - 93, 101, 75, 10}},
            {191, RadioButton, "Text raised ", {right - 93, 111, 75, 10}},
            {161, DropDownList, "", {right - 92, 122, 76, 125}},
            {162, DropDownList, "", {right - 92, 139, 76, 125}},
            {163, DropDownList, "", {right - 92, 156, 76, 125}},
        },
        // clang-format on
    };
    for (int i = 0; i < 16; ++i) {
        const auto field = [&](int id, int y, int color) {
            window.controls.push_back({id,
                                       Label,
                                       "",
                                       {5 + 11 * i, y, 11, 10},
                                       SystemsFont,
                                       ExpectedPalette[static_cast<std::size_t>(color)],
                                       SystemsColor,
                                       false,
                                       Notifies | Sunken});
        };
        field(111 + i, bottom - 45, i);
        field(127 + i, bottom - 35, i + 16);
    }
    const std::string fieldsHelp = "Color fields:  Left-click to set pen color.  Right-click to set fill color.";
    // clang-format off
    const std::vector<ExpectedControl> others{
        {143, Label, "", {185, bottom - 45, 21, 20}, SystemsFont, 0x000000, SystemsColor, false, Sunken},
        {144, Label, "", {188, bottom - 42, 15, 14}, SystemsFont, 0xC4C1C4},
        {146, Label, fieldsHelp, {5, bottom - 55, 210, 10}},
        {145, Label, "Pos:", {right - 90, 180, 80, 20}},
        {150, PushButton, "&Open", {right - 90, 210, 80, 14}, SystemsFont, SystemsColor, SystemsColor, true},
        {151, PushButton, "Save && Close", {right - 90, 230, 80, 14}},
        {152, PushButton, "&Clear", {right - 90, 250, 80, 14}},
        {147, PushButton, "Text", {right - 90, 270, 80, 14}, SystemsFont, SystemsColor, SystemsColor, true},
        {2, PushButton, "&Quit", {right - 90, 210, 80, 14}},
        {192, PushButton, "&Undo", {right - 90, 270, 40, 14}},
        {193, PushButton, "&Redo", {right - 50, 270, 40, 14}},
    };
    // clang-format on
    window.controls.insert(window.controls.end(), others.begin(), others.end());
    return window;
}

} // namespace tests
