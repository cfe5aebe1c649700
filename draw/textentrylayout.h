// The window for entering text, control by control.
#pragma once

#include "toolkit/layout.h"

namespace lumbrix::textentry {

enum Id : int {
    TextBox = 2001,
    ChangeFontButton = 2002,
    AbortButton = 2003,
    ExitButton = 2004,
    AngleBox = 2005,
    AngleLabel = 2006,
};

// clang-format off
inline constexpr Control TextEntryControls[] = {
    {TextBox, ControlKind::MultiLineBox, "Enter text", 5, 5, 150, 55, NoFont},
    {AngleBox, ControlKind::MultiLineBox, "0", 5, 80, 150, 15, NoFont},
    {ChangeFontButton, ControlKind::PushButton, "Change Font", 165, 5, 70, 15, NoFont},
    {AbortButton, ControlKind::PushButton, "Abort", 165, 60, 70, 15, NoFont},
    {ExitButton, ControlKind::PushButton, "Exit", 165, 80, 70, 15, NoFont},
    {AngleLabel, ControlKind::Label, "Angle (degrees)                                            ", 5, 70, 145, 10, NoFont},
};
// clang-format on

// Without a system menu there is no close box. It stands in the middle, whatever its place says.
inline constexpr WindowLayout TextEntryLayout{
    .caption = "Enter Text",
    .x = 315,
    .y = 263,
    .width = 244,
    .height = 102,
    .style = FixedDialog | Centered,
    .extendedStyle = DialogFrame,
    .background = SystemColor,
    .fonts = {},
    .controls = TextEntryControls,
};

} // namespace lumbrix::textentry
