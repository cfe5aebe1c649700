// The Free Edit window, control by control, and how its bar is laid out in whatever size it has.
#pragma once

#include "base/geometry.h"
#include "toolkit/layout.h"

#include <array>

namespace lumbrix::transformwindow {

enum Id : int {
    RotationSlider = 1002,
    RotationLabel = 1003,
    StretchLabel = 1004,
    StretchSlider = 1005,
    BarLabel = 1006, // never shown; its height is the bar's
    SaveLabel = 1007,
    SelectLabel = 1008,
    SelectButton = 1009,
    PathBox = 1010,
    SkewLabel = 1011,
    DrawLabel = 1020,
};

inline constexpr int LoadTimer = 2002;

inline constexpr WindowColor PanelColour = ColorOf(128, 160, 200);
inline constexpr WindowColor BarTextColor = ColorOf(255, 255, 255);
inline constexpr WindowColor CanvasColor = ColorOf(255, 255, 255);
inline constexpr WindowColor RestingColor = ColorOf(128, 128, 128); // of a label that acts as a button
inline constexpr WindowColor HoveredColor = ColorOf(87, 87, 87);

inline constexpr WindowFont TransformWindowFonts[] = {{"Arial", 10, 700}, {"Arial", 10, 400}};
inline constexpr int BoldFont = 0;
inline constexpr int PlainFont = 1;

// clang-format off
inline constexpr Control TransformWindowControls[] = {
    {RotationSlider, ControlKind::TrackBar, "ROTATE", 109, 210, 100, 20, NoFont, PanelColour, ShowsSelectedRange, BarTextColor, SeeThrough},
    {RotationLabel, ControlKind::Label, "Rotation: 0", 116, 200, 90, 10, BoldFont, PanelColour, 0, BarTextColor, SeeThrough},
    {StretchLabel, ControlKind::Label, "Stretch: 1", 219, 200, 90, 10, BoldFont, PanelColour, 0, BarTextColor, SeeThrough},
    {StretchSlider, ControlKind::TrackBar, "STRETCH", 214, 210, 100, 20, NoFont, PanelColour, ShowsSelectedRange, BarTextColor, SeeThrough},
    {BarLabel, ControlKind::Label, "", 0, 200, 395, 30, NoFont, PanelColour},
    {SaveLabel, ControlKind::Label, "Save", 320, 205, 65, 20, BoldFont, RestingColor, LabelAsButton, BarTextColor, StaticEdge},
    {SkewLabel, ControlKind::Label, "Skew", 320, 205, 35, 16, BoldFont, RestingColor, LabelAsButton, BarTextColor, StaticEdge},
    {SelectLabel, ControlKind::Label, "Select Image:", 5, 200, 90, 10, BoldFont, PanelColour, 0, BarTextColor, SeeThrough},
    {SelectButton, ControlKind::PushButton, "..", 95, 211, 15, 12, BoldFont},
    {PathBox, ControlKind::TextBox, "", 5, 212, 90, 9, PlainFont},
    {DrawLabel, ControlKind::Label, "Draw", 280, 205, 35, 16, BoldFont, RestingColor, LabelAsButton, BarTextColor, StaticEdge},
};
// clang-format on

inline constexpr WindowLayout TransformWindowLayout{
    .caption = "Change your image",
    .x = 241,
    .y = 252,
    .width = 404,
    .height = 239,
    .style = FixedDialog | HasSystemMenu,
    .extendedStyle = DialogFrame,
    .background = PanelColour,
    .fonts = TransformWindowFonts,
    .controls = TransformWindowControls,
};

// The labels that act as buttons.
inline constexpr std::array<Id, 3> ButtonLabels{SaveLabel, SkewLabel, DrawLabel};

// Hidden whenever the window gets a size, and so never seen.
inline constexpr std::array<Id, 3> HiddenAtEachSize{SelectLabel, SelectButton, PathBox};

inline constexpr WindowLayout CanvasLayout{
    .caption = "",
    .x = 0,
    .y = 0,
    .width = 404,
    .height = 239,
    .style = BareWindow,
    .extendedStyle = 0,
    .background = CanvasColor,
    .fonts = {},
    .controls = {},
};

// All in dialog units.
struct ControlPlace {
    Id id;
    int x;
    int y;
    int width;
    int height;

    bool operator==(const ControlPlace&) const = default;
};

// The controls of the bar along the lower border.
std::array<ControlPlace, 8> BarPlaces(PixelSize client);

// What remains above the bar, from the upper left corner on.
PixelSize CanvasSize(PixelSize client);

} // namespace lumbrix::transformwindow
