// What the skew dialog must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

namespace tests {

inline ExpectedWindow ExpectedSkewDialog() {
    const ExpectedFont arial{"Arial", 10, 400};
    return {
        .caption = "Skewing",
        .place = {95, 98, 200, 151},
        .style = 0x84C008D4,
        .extendedStyle = 0x00010108,
        .background = SystemsColor,
        .font = arial,
        .position = ExpectedPosition::MiddleOfTheScreen,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {1001, ExpectedKind::Frame, "Top left corner", {5, 5, 190, 40}, arial},
            {1002, ExpectedKind::Label, "Horizontal:", {25, 18, 50, 10}, arial},
            {1003, ExpectedKind::Label, "Vertical:", {25, 30, 50, 10}, arial},
            {1004, ExpectedKind::DigitsBox, "", {80, 15, 100, 13}, arial},
            {1005, ExpectedKind::DigitsBox, "", {80, 28, 100, 13}, arial},
            {1006, ExpectedKind::Frame, "Top right corner", {5, 45, 190, 40}, arial},
            {1007, ExpectedKind::Label, "Horizontal:", {25, 54, 50, 10}, arial},
            {1008, ExpectedKind::Label, "Vertical:", {25, 66, 50, 10}, arial},
            {1009, ExpectedKind::DigitsBox, "", {80, 55, 100, 13}, arial},
            {1010, ExpectedKind::DigitsBox, "", {80, 68, 100, 13}, arial},
            {1016, ExpectedKind::DigitsBox, "", {79, 109, 100, 13}, arial},
            {1017, ExpectedKind::DigitsBox, "", {79, 96, 100, 13}, arial},
            {1018, ExpectedKind::Label, "Vertical:", {24, 107, 50, 10}, arial},
            {1019, ExpectedKind::Label, "Horizontal:", {24, 95, 50, 10}, arial},
            {1020, ExpectedKind::Frame, "Bottom left corner", {4, 86, 190, 40}, arial},
            {1021, ExpectedKind::PushButton, "Abort", {4, 130, 50, 15}, arial},
            {1022, ExpectedKind::PushButton, "Set", {145, 130, 50, 15}, arial},
        },
        // clang-format on
    };
}

} // namespace tests
