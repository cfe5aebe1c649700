// What the About box must look like.
#pragma once

#include "tests/othermakerlines.h"
#include "tests/windows/expected/expectedwindow.h"

// The maker's lines of a build that is not configured otherwise.
#ifndef LUMBRIX_MAKER_NAME
#define LUMBRIX_MAKER_NAME "The Lumbrix project"
#endif
#ifndef LUMBRIX_MAKER_STREET
#define LUMBRIX_MAKER_STREET "1 Example Street"
#endif
#ifndef LUMBRIX_MAKER_CITY
#define LUMBRIX_MAKER_CITY "Example City"
#endif
#ifndef LUMBRIX_MAKER_EMAIL
#define LUMBRIX_MAKER_EMAIL "lumbrix@example.org"
#endif
#ifndef LUMBRIX_MAKER_WEB
#define LUMBRIX_MAKER_WEB "https://www.example.org/lumbrix"
#endif

namespace tests {

// In a label a single ampersand would underline what follows.
inline std::string InALabel(const std::string& text) {
    std::string caption;
    for (const char character : text) {
        caption.append(character == '&' ? 2 : 1, character);
    }
    return caption;
}

inline ExpectedWindow ExpectedAboutBox() {
    constexpr ExpectedColor Magenta = 0xFF00FF;
    constexpr ExpectedColor Blue = 0xFF0000;
    constexpr std::uint32_t AtRight = 2;
    const ExpectedFont title{"Arial", 12, 800};
    const ExpectedFont maker{"Arial", 10, 600};
    const ExpectedFont link{"Arial", 10, 400, true, true};
    return {
        .caption = "About Lumbrix...",
        .place = {62, 38, 200, 121},
        .style = 0x84C808D4,
        .extendedStyle = 0x00010100,
        .background = SystemsColor,
        .font = title,
        .position = ExpectedPosition::MiddleOfTheScreen,
        .drop = ExpectedDrop::Refused,
        // clang-format off
        .controls = {
            {201, ExpectedKind::Label, "Lumbrix", {5, 12, 176, 12}, title, SystemsColor, Magenta},
            {202, ExpectedKind::Label, "Version 1.5", {5, 24, 146, 8}, maker, SystemsColor, Magenta},
            {203, ExpectedKind::Label, InALabel(LUMBRIX_MAKER_NAME), {5, 38, 185, 10}, maker, SystemsColor, SystemsColor, false, AtRight},
            {204, ExpectedKind::Label, InALabel(LUMBRIX_MAKER_STREET), {130, 48, 60, 8}, SystemsFont, SystemsColor, SystemsColor, false, AtRight},
            {205, ExpectedKind::Label, InALabel(LUMBRIX_MAKER_CITY), {130, 56, 60, 8}, SystemsFont, SystemsColor, SystemsColor, false, AtRight},
            {206, ExpectedKind::Label, InALabel("Email: " LUMBRIX_MAKER_EMAIL), {60, 64, 130, 8}, SystemsFont, SystemsColor, SystemsColor, false, AtRight},
            {208, ExpectedKind::Label, "System Information", {5, 90, 130, 10}, link, SystemsColor, Blue},
            {207, ExpectedKind::Label, InALabel(LUMBRIX_MAKER_WEB), {5, 102, 130, 10}, link, SystemsColor, Blue},
            {210, ExpectedKind::Label, "Uninstall", {160, 90, 130, 10}, link, SystemsColor, Blue},
        },
        // clang-format on
    };
}

} // namespace tests
