// What the main window must look like.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

namespace tests {

inline ExpectedWindow ExpectedMainWindow() {
    const ExpectedFont regular{"Arial", 10, 400};
    const ExpectedFont bold{"Arial", 12, 700};
    constexpr ExpectedColor cyan = 0xFFFF00;
    return {
        .caption = "Lumbrix",
        .place = {194, 0, 276, 249},
        .style = 0x84CB08D4,
        .extendedStyle = 0x00010100,
        .background = cyan,
        .font = regular,
        .position = ExpectedPosition::MiddleOfTheScreen,
        .drop = ExpectedDrop::Taken,
        // clang-format off
        .controls = {
            {1001, ExpectedKind::Label, "Single image file to convert:", {10, 20, 120, 10}, regular, cyan},
            {1021, ExpectedKind::Label, "", {135, 20, 100, 10}, regular, cyan},
            {1002, ExpectedKind::Label, "Convert/Write to:", {5, 80, 130, 10}, regular, cyan},
            {1003, ExpectedKind::TextBox, "", {10, 30, 230, 13}, regular},
            {1004, ExpectedKind::TextBox, "", {5, 89, 240, 13}, regular},
            {1005, ExpectedKind::PushButton, "..", {245, 30, 15, 12}, bold},
            {1006, ExpectedKind::PushButton, "..", {255, 90, 15, 12}, bold},
            {1007, ExpectedKind::Frame, "Type of output image", {5, 105, 115, 80}, regular, cyan},
            {1008, ExpectedKind::FirstRadioButton, "BITMAP (bmp)", {15, 120, 100, 10}, regular, cyan},
            {1009, ExpectedKind::RadioButton, "JPEG (jpg)", {15, 130, 100, 10}, regular, cyan},
            {1010, ExpectedKind::RadioButton, "GIF", {15, 140, 100, 10}, regular, cyan},
            {1011, ExpectedKind::RadioButton, "TIFF (tiff)", {15, 150, 100, 10}, regular, cyan},
            {1012, ExpectedKind::RadioButton, "PNG", {15, 160, 100, 10}, regular, cyan},
            {1013, ExpectedKind::RadioButton, "SGL", {15, 170, 100, 10}, regular, cyan},
            {1015, ExpectedKind::CheckBox, "Create smaller image", {125, 110, 120, 10}, regular, cyan},
            {1016, ExpectedKind::Frame, "Height of smaller image in pixels", {125, 122, 145, 33}, regular, cyan},
            {1017, ExpectedKind::TextBox, "50", {130, 135, 125, 13}, regular},
            {1018, ExpectedKind::PushButton, "Convert", {125, 190, 45, 15}, regular},
            {1019, ExpectedKind::PushButton, "About", {225, 210, 45, 15}, regular},
            {1023, ExpectedKind::Frame, "Select one of these sources", {5, 5, 265, 70}, regular, cyan},
            {1024, ExpectedKind::TextBox, "", {10, 55, 230, 13}, regular},
            {1025, ExpectedKind::PushButton, "..", {245, 55, 15, 12}, bold},
            {1026, ExpectedKind::Label, "All images in this folder:", {10, 45, 100, 10}, regular, cyan},
            {1027, ExpectedKind::CheckBox, "Crop", {60, 180, 60, 10}, regular, cyan, SystemsColor, true},
            {1028, ExpectedKind::PushButton, "Annotate", {175, 190, 45, 15}, regular},
            {1029, ExpectedKind::Frame, "Rotate", {5, 185, 115, 60}, regular, cyan},
            {1030, ExpectedKind::FirstRadioButton, "0 degrees", {15, 195, 70, 10}, regular, cyan},
            {1031, ExpectedKind::RadioButton, "90 degrees", {15, 207, 70, 10}, regular, cyan},
            {1032, ExpectedKind::RadioButton, "180 degrees", {15, 218, 70, 10}, regular, cyan},
            {1033, ExpectedKind::RadioButton, "270 degrees", {15, 229, 70, 10}, regular, cyan},
            {1034, ExpectedKind::PushButton, "Free Edit", {225, 190, 45, 15}, regular},
            {1035, ExpectedKind::PushButton, "Rotate/Flip", {125, 210, 45, 15}, regular},
            {1036, ExpectedKind::PushButton, "Crop", {175, 210, 45, 15}, regular},
            {1037, ExpectedKind::Frame, "Flip", {126, 156, 145, 29}, regular, cyan},
            {1038, ExpectedKind::CheckBox, "Vertically", {130, 170, 60, 10}, regular, cyan},
            {1039, ExpectedKind::CheckBox, "Horizontally", {205, 170, 60, 10}, regular, cyan},
        },
        // clang-format on
    };
}

} // namespace tests
