// What the annotate and crop window must look like in its three modes.
#pragma once

#include "tests/windows/expected/expectedwindow.h"

#include <algorithm>

namespace tests {

inline ExpectedWindow ExpectedAnnotateWindow() {
    const ExpectedFont arial{"Arial", 10, 400};
    constexpr ExpectedColor cyan = 0xFFFF00;
    constexpr ExpectedColor black = 0x000000;
    constexpr ExpectedColor red = 0x0000FF;
    const std::string help =
        "Click Stamp for overstamping with image or write the text to annotate. Click the picture where the "
        "annotation should be. Repeat as needed.The annotated image will be created as the 'Convert/Write to' shows.";
    return {
        .caption = "Annotate image",
        .place = {0, 0, 427, 295},
        .style = 0x84C800D4,
        .extendedStyle = 0x00010100,
        .background = cyan,
        .font = arial,
        .position = ExpectedPosition::TopLeftOfTheScreen,
        .drop = ExpectedDrop::Taken,
        // clang-format off
        .controls = {
            {1001, ExpectedKind::PictureList, "", {0, 0, 428, 255}},
            {1002, ExpectedKind::Label, "Annotation:", {5, 260, 45, 10}, arial, cyan, black},
            {1003, ExpectedKind::TextBox, "", {50, 260, 220, 13}},
            {1012, ExpectedKind::PushButton, "Font Color", {275, 260, 70, 15}, SystemsFont, SystemsColor, SystemsColor, true},
            {1014, ExpectedKind::PushButton, "Font", {380, 260, 30, 15}, arial},
            {1020, ExpectedKind::PushButton, "Stamp", {271, 260, 30, 15}, arial},
            {1019, ExpectedKind::CheckBox, "Keep", {305, 260, 35, 10}, arial, cyan, SystemsColor, false, 0x04000000},
            {1021, ExpectedKind::PushButton, "Help", {345, 260, 30, 15}, arial},
            {1013, ExpectedKind::Label, help, {5, 275, 420, 30}, arial, cyan, red},
        },
        // clang-format on
    };
}

inline void Hide(ExpectedWindow& window, const std::vector<int>& ids) {
    for (ExpectedControl& control : window.controls) {
        control.isHidden = control.isHidden || std::find(ids.begin(), ids.end(), control.id) != ids.end();
    }
}

inline ExpectedWindow ExpectedCropWindow() {
    ExpectedWindow window = ExpectedAnnotateWindow();
    window.caption = "Crop image";
    Hide(window, {1002, 1003, 1014, 1020, 1021});
    window.controls[8].place = {5, 257, 420, 50};
    window.controls[8].caption =
        "Please click and hold down the left mouse button on the picture where the left upper corner of the cropped "
        "image should be. Than move the mouse to draw the rectangular as needed and release the button.\r\n"
        "The cropped image will be created as the 'Convert/Write to' shows in the prior screen.";
    std::rotate(window.controls.begin() + 6, window.controls.begin() + 7, window.controls.end()); // Keep lies below it
    return window;
}

inline ExpectedWindow ExpectedCroppedWindow() {
    ExpectedWindow window = ExpectedAnnotateWindow();
    window.caption = "Cropped image";
    window.place.height = 255;
    Hide(window, {1002, 1003, 1013, 1014, 1020, 1021});
    window.controls[8].place = {5, 257, 420, 50};
    window.controls[8].caption = "";
    return window;
}

// 0 annotates, 1 crops, 2 shows what was cropped.
inline ExpectedWindow ExpectedInMode(int mode) {
    return mode == 0 ? ExpectedAnnotateWindow() : mode == 1 ? ExpectedCropWindow() : ExpectedCroppedWindow();
}

} // namespace tests
