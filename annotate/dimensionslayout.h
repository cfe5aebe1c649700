// The crop dimensions dialog, control by control.
#pragma once

#include "toolkit/layout.h"

namespace lumbrix::cropdimensions {

enum Id : int {
    CropCornerLabel = 1001,
    CropLeftLabel = 1002,
    CropTopLabel = 1003,
    CropSizesLabel = 1004,
    CropWidthLabel = 1005,
    CropHeightLabel = 1006,
    CropOkButton = 1007,
    CropLeftBox = 1008,
    CropTopBox = 1009,
    CropWidthBox = 1010,
    CropHeightBox = 1011,
};

// clang-format off
inline constexpr Control CropDimensionsControls[] = {
    {CropCornerLabel, ControlKind::Label, "Upper left corner of cropped image at (in pixels)", 5, 5, 175, 10, NoFont},
    {CropLeftLabel, ControlKind::Label, "From the left side of the original image:", 25, 30, 130, 10, NoFont},
    {CropTopLabel, ControlKind::Label, "From the top of the original image:", 25, 45, 130, 10, NoFont},
    {CropSizesLabel, ControlKind::Label, "Dimensions of the cropped image (in pixels)", 5, 85, 175, 10, NoFont},
    {CropWidthLabel, ControlKind::Label, "Width:", 25, 100, 130, 10, NoFont},
    {CropHeightLabel, ControlKind::Label, "Height:", 25, 115, 130, 10, NoFont},
    {CropOkButton, ControlKind::PushButton, "OK", 185, 135, 70, 15, NoFont},
    {CropLeftBox, ControlKind::TextBox, "", 155, 30, 100, 13, NoFont},
    {CropTopBox, ControlKind::TextBox, "", 155, 45, 100, 13, NoFont},
    {CropWidthBox, ControlKind::TextBox, "", 155, 100, 100, 13, NoFont},
    {CropHeightBox, ControlKind::TextBox, "", 155, 115, 100, 13, NoFont},
};
// clang-format on

// Without a system menu there is no close box.
inline constexpr WindowLayout CropDimensionsLayout{
    .caption = "Crop dimensions",
    .x = 174,
    .y = 182,
    .width = 263,
    .height = 155,
    .style = FixedDialog | Centered,
    .extendedStyle = DialogFrame,
    .background = SystemColor,
    .fonts = {},
    .controls = CropDimensionsControls,
};

} // namespace lumbrix::cropdimensions
