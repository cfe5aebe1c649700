// What the Free Edit window must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

namespace tests {

// As it is made; its first size lays it out anew.
inline ExpectedWindow ExpectedTransformWindow() {
    constexpr ExpectedColor Light = 0xFFFFFF;
    constexpr ExpectedColor Panel = 0xC8A080; // 128, 160, 200
    constexpr ExpectedColor Grey = 0x808080;
    const ExpectedFont bold{"Arial", 10, 700};
    return {
        .caption = "Change your image",
        .place = {241, 252, 404, 239},
        .style = 0x84C800D4,
        .extendedStyle = 0x00010100,
        .background = Panel,
        .font = bold,
        .position = ExpectedPosition::Maximized,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {1002, ExpectedKind::TrackBar, "ROTATE", {109, 210, 100, 20}, SystemsFont, Panel, Light, false, 0x20, 0x20},
            {1003, ExpectedKind::Label, "Rotation: 0", {116, 200, 90, 10}, bold, Panel, Light, false, 0, 0x20},
            {1004, ExpectedKind::Label, "Stretch: 1", {219, 200, 90, 10}, bold, Panel, Light, false, 0, 0x20},
            {1005, ExpectedKind::TrackBar, "STRETCH", {214, 210, 100, 20}, SystemsFont, Panel, Light, false, 0x20, 0x20},
            {1006, ExpectedKind::Label, "", {0, 200, 395, 30}, SystemsFont, Panel},
            {1007, ExpectedKind::Label, "Save", {320, 205, 65, 20}, bold, Grey, Light, false, 0x801201, 0x20000},
            {1011, ExpectedKind::Label, "Skew", {320, 205, 35, 16}, bold, Grey, Light, false, 0x801201, 0x20000},
            {1008, ExpectedKind::Label, "Select Image:", {5, 200, 90, 10}, bold, Panel, Light, false, 0, 0x20},
            {1009, ExpectedKind::PushButton, "..", {95, 211, 15, 12}, bold},
            {1010, ExpectedKind::TextBox, "", {5, 212, 90, 9}, {"Arial", 10, 400}},
            {1020, ExpectedKind::Label, "Draw", {280, 205, 35, 16}, bold, Grey, Light, false, 0x801201, 0x20000},
        },
        // clang-format on
    };
}

} // namespace tests
