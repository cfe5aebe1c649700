// The product's table of a window held against what is expected of it. How the product writes tables is known only
// here.
#pragma once

#include "tests/windows/expected/expectedwindow.h"
#include "toolkit/layout.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>

namespace tests {

inline std::ostream& operator<<(std::ostream& stream, const ExpectedPlace& place) {
    return stream << place.x << ',' << place.y << ' ' << place.width << 'x' << place.height;
}

inline std::ostream& operator<<(std::ostream& stream, const ExpectedFont& font) {
    return stream << font.face << ' ' << font.points << ' ' << font.weight << (font.isItalic ? " italic" : "")
                  << (font.isUnderlined ? " underlined" : "");
}

// All that a table says of a control, to be compared and to be read.
inline std::string Row(const ExpectedControl& control) {
    std::ostringstream text;
    text << control.id << ", kind " << static_cast<int>(control.kind) << ", \"" << control.caption << "\" at "
         << control.place << " in " << control.font << ", " << control.text << " on " << control.background
         << ", styles " << std::hex << control.extraStyle << " and " << control.extraExtendedStyle;
    return text.str();
}

inline std::string Head(const ExpectedWindow& window) {
    std::ostringstream text;
    text << '"' << window.caption << "\" at " << window.place << " in " << window.font << " on " << window.background
         << ", styles " << std::hex << window.style << " and " << window.extendedStyle;
    return text.str();
}

// What makes a radio button the first of its group.
constexpr std::uint32_t FirstOfAGroup = 0x20D00;

inline bool IsFirstOfAGroup(const lumbrix::OwnedControl& control) {
    return control.kind == lumbrix::ControlKind::RadioButton && control.extraStyle == FirstOfAGroup;
}

inline ExpectedKind TabledKind(const lumbrix::OwnedControl& control) {
    switch (control.kind) {
    case lumbrix::ControlKind::Label:
        return ExpectedKind::Label;
    case lumbrix::ControlKind::TextBox:
        return ExpectedKind::TextBox;
    case lumbrix::ControlKind::DigitsBox:
        return ExpectedKind::DigitsBox;
    case lumbrix::ControlKind::MultiLineBox:
        return ExpectedKind::MultiLineBox;
    case lumbrix::ControlKind::PushButton:
        return ExpectedKind::PushButton;
    case lumbrix::ControlKind::CheckBox:
        return ExpectedKind::CheckBox;
    case lumbrix::ControlKind::RadioButton:
        return IsFirstOfAGroup(control) ? ExpectedKind::FirstRadioButton : ExpectedKind::RadioButton;
    case lumbrix::ControlKind::Frame:
        return ExpectedKind::Frame;
    case lumbrix::ControlKind::DropDownList:
        return ExpectedKind::DropDownList;
    case lumbrix::ControlKind::TrackBar:
        return ExpectedKind::TrackBar;
    case lumbrix::ControlKind::Graphic:
        return ExpectedKind::Graphic;
    case lumbrix::ControlKind::PictureList:
        break;
    }
    return ExpectedKind::PictureList;
}

inline ExpectedColor TabledColor(lumbrix::WindowColor color) {
    return color == lumbrix::SystemColor ? SystemsColor : ExpectedColor{color};
}

inline ExpectedFont TabledFont(const lumbrix::OwnedLayout& layout, int font) {
    if (font == lumbrix::NoFont || layout.fonts.empty()) {
        return SystemsFont;
    }
    const lumbrix::WindowFont& tabled = layout.fonts.at(static_cast<std::size_t>(font));
    return {tabled.face, tabled.points, tabled.weight, tabled.slant == lumbrix::FontSlant::Italic,
            tabled.lines == lumbrix::FontLines::Underline};
}

// Whether and when something is hidden stands elsewhere.
inline ExpectedControl TabledControl(const lumbrix::OwnedLayout& layout, const lumbrix::OwnedControl& control) {
    return {control.id,
            TabledKind(control),
            control.caption,
            {control.x, control.y, control.width, control.height},
            TabledFont(layout, control.font),
            TabledColor(control.background),
            TabledColor(control.text),
            false,
            IsFirstOfAGroup(control) ? 0 : control.extraStyle,
            control.extraExtendedStyle};
}

inline void ExpectTable(const lumbrix::OwnedLayout& layout, const ExpectedWindow& expected) {
    const ExpectedWindow head{.caption = layout.caption,
                              .place = {layout.x, layout.y, layout.width, layout.height},
                              .style = layout.style,
                              .extendedStyle = layout.extendedStyle,
                              .background = TabledColor(layout.background),
                              .font = TabledFont(layout, 0),
                              .position = expected.position,
                              .drop = expected.drop,
                              .controls = {}};
    EXPECT_EQ(Head(head), Head(expected));
    ASSERT_EQ(layout.controls.size(), expected.controls.size());
    for (std::size_t row = 0; row < expected.controls.size(); ++row) {
        EXPECT_EQ(Row(TabledControl(layout, layout.controls[row])), Row(expected.controls[row]));
    }
}

inline void ExpectTable(const lumbrix::WindowLayout& table, const ExpectedWindow& expected) {
    ExpectTable(lumbrix::OwnedLayout(table), expected);
}

} // namespace tests
