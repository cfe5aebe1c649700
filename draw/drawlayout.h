// The paint window, control by control, in whatever size the screen has.
#pragma once

#include "base/geometry.h"
#include "draw/palette.h"
#include "toolkit/layout.h"

#include <array>
#include <optional>

namespace lumbrix::drawwindow {

enum Id : int {
    QuitButton = 2, // also what the close box sends
    DrawCanvas = 101,
    FirstColorField = 111, // of two rows, the upper one first
    LastColorField = 142,
    PenIndicator = 143,
    FillIndicator = 144, // within the one of the pen
    StatusLabel = 145,
    ColorFieldsLabel = 146,
    TextButton = 147, // never shown; text is placed on its command
    OpenButton = 150, // never shown, and does nothing
    SaveButton = 151,
    ClearButton = 152,
    PatternList = 161,
    PenWidthList = 162,
    PenTypeList = 163,
    DrawFrame = 171,
    LineOption = 181,
    FreehandOption = 182,
    BeamsOption = 183,
    RoundedBoxOption = 184,
    SquareBoxOption = 185,
    CircleOption = 186,
    OvalOption = 187,
    FillAreaOption = 188,
    NormalTextOption = 189,
    SunkenTextOption = 190,
    RaisedTextOption = 191,
    UndoButton = 192,
    RedoButton = 193,
};

inline constexpr const char* Caption = "Draw";

// What the status label says at first, and while the mouse is not over the canvas.
inline constexpr const char* RestingStatus = "Pos:";

// What the lists offer. An item's place tells what it means.
inline constexpr std::array<const char*, 8> Patterns{
    "Hollow",           "Solid",
    "Horizontal lines", "Vertical lines",
    "Upward diagonal",  "Downward diagonal",
    "Crossed lines",    "Diagonal crossed",
};
inline constexpr std::array<const char*, 10> PenWidths{
    "Pen width =   1", "Pen width =   2", "Pen width =   3", "Pen width =   4", "Pen width =   5",
    "Pen width =   6", "Pen width =   7", "Pen width =   8", "Pen width =   9", "Pen width = 10",
};
inline constexpr std::array<const char*, 5> PenTypes{
    "Pen type = Solid", "Pen type = Dash", "Pen type = Dot", "Pen type = DashDot", "Pen type = DashDotDot",
};

// Which of them are selected at first, counted from 0.
inline constexpr int StartPattern = 1;
inline constexpr int StartPenWidth = 0;
inline constexpr int StartPenType = 0;

// The radio button that is checked at first, and the range in which the others then are not.
inline constexpr Id StartOption = LineOption;
inline constexpr Id LastOptionClearedAtStart = FillAreaOption;

inline constexpr std::array<Id, 2> HiddenAtStart{OpenButton, TextButton};

inline constexpr WindowColor StartPenColor = PaletteColor(0);
inline constexpr WindowColor StartFillColor = PaletteColor(7);
inline constexpr WindowColor CanvasColor = ColorOf(255, 255, 255);

// All sizes are in dialog units. The canvas is as large as the picture, or as what the window leaves it, which is below
// 0 on a tiny screen.
PixelSize CanvasSize(PixelSize screen, PixelSize picture);

// The window as large as the screen, its controls in the order in which they are made. Nothing where the screen has no
// width or no height.
std::optional<OwnedLayout> DrawWindowLayout(PixelSize screen, PixelSize picture);

} // namespace lumbrix::drawwindow
