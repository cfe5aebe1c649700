// What the crop dimensions dialog must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

namespace tests {

inline ExpectedWindow ExpectedCropDimensions() {
    return {
        .caption = "Crop dimensions",
        .place = {174, 182, 263, 155},
        .style = 0x84C008D4,
        .extendedStyle = 0x00010100,
        .background = SystemsColor,
        .font = SystemsFont,
        .position = ExpectedPosition::MiddleOfTheScreen,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {1001, ExpectedKind::Label, "Upper left corner of cropped image at (in pixels)", {5, 5, 175, 10}},
            {1002, ExpectedKind::Label, "From the left side of the original image:", {25, 30, 130, 10}},
            {1003, ExpectedKind::Label, "From the top of the original image:", {25, 45, 130, 10}},
            {1004, ExpectedKind::Label, "Dimensions of the cropped image (in pixels)", {5, 85, 175, 10}},
            {1005, ExpectedKind::Label, "Width:", {25, 100, 130, 10}},
            {1006, ExpectedKind::Label, "Height:", {25, 115, 130, 10}},
            {1007, ExpectedKind::PushButton, "OK", {185, 135, 70, 15}},
            {1008, ExpectedKind::TextBox, "", {155, 30, 100, 13}},
            {1009, ExpectedKind::TextBox, "", {155, 45, 100, 13}},
            {1010, ExpectedKind::TextBox, "", {155, 100, 100, 13}},
            {1011, ExpectedKind::TextBox, "", {155, 115, 100, 13}},
        },
        // clang-format on
    };
}

} // namespace tests
