// The skew dialog, control by control.
#pragma once

#include "toolkit/layout.h"

#include <array>

namespace lumbrix::skewdialog {

enum Id : int {
    TopLeftFrame = 1001,
    TopLeftXLabel = 1002,
    TopLeftYLabel = 1003,
    TopLeftXBox = 1004,
    TopLeftYBox = 1005,
    TopRightFrame = 1006,
    TopRightXLabel = 1007,
    TopRightYLabel = 1008,
    TopRightXBox = 1009,
    TopRightYBox = 1010,
    BottomLeftYBox = 1016,
    BottomLeftXBox = 1017,
    BottomLeftYLabel = 1018,
    BottomLeftXLabel = 1019,
    BottomLeftFrame = 1020,
    AbortButton = 1021,
    SetButton = 1022,
};

// In the order of the corners' texts.
inline constexpr std::array<Id, 6> CornerBoxes{TopLeftXBox,  TopLeftYBox,    TopRightXBox,
                                               TopRightYBox, BottomLeftXBox, BottomLeftYBox};

inline constexpr WindowFont SkewDialogFonts[] = {{"Arial", 10, 400}};
inline constexpr int SkewFont = 0;

// clang-format off
inline constexpr Control SkewDialogControls[] = {
    {TopLeftFrame, ControlKind::Frame, "Top left corner", 5, 5, 190, 40, SkewFont},
    {TopLeftXLabel, ControlKind::Label, "Horizontal:", 25, 18, 50, 10, SkewFont},
    {TopLeftYLabel, ControlKind::Label, "Vertical:", 25, 30, 50, 10, SkewFont},
    {TopLeftXBox, ControlKind::DigitsBox, "", 80, 15, 100, 13, SkewFont},
    {TopLeftYBox, ControlKind::DigitsBox, "", 80, 28, 100, 13, SkewFont},
    {TopRightFrame, ControlKind::Frame, "Top right corner", 5, 45, 190, 40, SkewFont},
    {TopRightXLabel, ControlKind::Label, "Horizontal:", 25, 54, 50, 10, SkewFont},
    {TopRightYLabel, ControlKind::Label, "Vertical:", 25, 66, 50, 10, SkewFont},
    {TopRightXBox, ControlKind::DigitsBox, "", 80, 55, 100, 13, SkewFont},
    {TopRightYBox, ControlKind::DigitsBox, "", 80, 68, 100, 13, SkewFont},
    {BottomLeftYBox, ControlKind::DigitsBox, "", 79, 109, 100, 13, SkewFont},
    {BottomLeftXBox, ControlKind::DigitsBox, "", 79, 96, 100, 13, SkewFont},
    {BottomLeftYLabel, ControlKind::Label, "Vertical:", 24, 107, 50, 10, SkewFont},
    {BottomLeftXLabel, ControlKind::Label, "Horizontal:", 24, 95, 50, 10, SkewFont},
    {BottomLeftFrame, ControlKind::Frame, "Bottom left corner", 4, 86, 190, 40, SkewFont},
    {AbortButton, ControlKind::PushButton, "Abort", 4, 130, 50, 15, SkewFont},
    {SetButton, ControlKind::PushButton, "Set", 145, 130, 50, 15, SkewFont},
};
// clang-format on

// Without a system menu there is no close box. It stands in the middle, whatever its place says.
inline constexpr WindowLayout SkewDialogLayout{
    .caption = "Skewing",
    .x = 95,
    .y = 98,
    .width = 200,
    .height = 151,
    .style = FixedDialog | Centered,
    .extendedStyle = DialogFrame | AlwaysOnTop,
    .background = SystemColor,
    .fonts = SkewDialogFonts,
    .controls = SkewDialogControls,
};

} // namespace lumbrix::skewdialog
