// The About box, line by line.
#pragma once

#include "desktop/maker.h"
#include "toolkit/layout.h"

namespace lumbrix::aboutbox {

enum Id : int {
    ProductLabel = 201,
    VersionLabel = 202,
    MakerLabel = 203,
    StreetLabel = 204,
    CityLabel = 205,
    EmailLabel = 206,
    WebPageLabel = 207,
    SystemInfoLabel = 208,
    UninstallLabel = 210,
};

inline constexpr WindowFont AboutBoxFonts[] = {
    {"Arial", 12, 800},
    {"Arial", 10, 600},
    {"Arial", 10, 400, FontSlant::Italic, FontLines::Underline},
    {"Arial", 10, 400, FontSlant::Italic, FontLines::Underline},
};
inline constexpr int TitleFont = 0;
inline constexpr int MakerFont = 1;
inline constexpr int LinkFont = 2;
inline constexpr int SecondLinkFont = 3;

inline constexpr WindowColor Magenta = ColorOf(255, 0, 255);
inline constexpr WindowColor Blue = ColorOf(0, 0, 255);

// The last line reaches beyond the box, which cuts it off behind its text.
// clang-format off
inline constexpr Control AboutBoxControls[] = {
    {ProductLabel, ControlKind::Label, "Lumbrix", 5, 12, 176, 12, TitleFont, SystemColor, 0, Magenta},
    {VersionLabel, ControlKind::Label, "Version 1.5", 5, 24, 146, 8, MakerFont, SystemColor, 0, Magenta},
    {MakerLabel, ControlKind::Label, maker::NameLine, 5, 38, 185, 10, MakerFont, SystemColor, LabelAtRight},
    {StreetLabel, ControlKind::Label, maker::StreetLine, 130, 48, 60, 8, NoFont, SystemColor, LabelAtRight},
    {CityLabel, ControlKind::Label, maker::CityLine, 130, 56, 60, 8, NoFont, SystemColor, LabelAtRight},
    {EmailLabel, ControlKind::Label, maker::EmailLine, 60, 64, 130, 8, NoFont, SystemColor, LabelAtRight},
    {SystemInfoLabel, ControlKind::Label, "System Information", 5, 90, 130, 10, SecondLinkFont, SystemColor, 0, Blue},
    {WebPageLabel, ControlKind::Label, maker::WebLine, 5, 102, 130, 10, LinkFont, SystemColor, 0, Blue},
    {UninstallLabel, ControlKind::Label, "Uninstall", 160, 90, 130, 10, SecondLinkFont, SystemColor, 0, Blue},
};
// clang-format on

// It stands in the middle, whatever its place says.
inline constexpr WindowLayout AboutBoxLayout{
    .caption = "About Lumbrix...",
    .x = 62,
    .y = 38,
    .width = 200,
    .height = 121,
    .style = FixedDialog | Centered | HasSystemMenu,
    .extendedStyle = DialogFrame,
    .background = SystemColor,
    .fonts = AboutBoxFonts,
    .controls = AboutBoxControls,
};

} // namespace lumbrix::aboutbox
