// What the window for entering text must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

namespace tests {

// As it is made; once it starts, both boxes show what is kept.
inline ExpectedWindow ExpectedTextEntry() {
    return {
        .caption = "Enter Text",
        .place = {315, 263, 244, 102},
        .style = 0x84C008D4,
        .extendedStyle = 0x00010100,
        .background = SystemsColor,
        .font = SystemsFont,
        .position = ExpectedPosition::MiddleOfTheScreen,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {2001, ExpectedKind::MultiLineBox, "Enter text", {5, 5, 150, 55}},
            {2005, ExpectedKind::MultiLineBox, "0", {5, 80, 150, 15}},
            {2002, ExpectedKind::PushButton, "Change Font", {165, 5, 70, 15}},
            {2003, ExpectedKind::PushButton, "Abort", {165, 60, 70, 15}},
            {2004, ExpectedKind::PushButton, "Exit", {165, 80, 70, 15}},
            {2006, ExpectedKind::Label, "Angle (degrees)" + std::string(44, ' '), {5, 70, 145, 10}},
        },
        // clang-format on
    };
}

} // namespace tests
