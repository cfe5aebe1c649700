// What shapes and areas are filled with.
#pragma once

#include "toolkit/layout.h"

#include <cstdint>

namespace lumbrix {

// A colour, or NoFill. The number of NoFill matters where it is taken for a colour all the same, as text does.
using FillValue = std::int32_t;
inline constexpr FillValue NoFill = -2;

constexpr FillValue FillValueOf(WindowColor color) { return static_cast<FillValue>(color); }

// The low 24 bits: a colour as it is, and a near white for NoFill.
constexpr WindowColor ColorOfFillValue(FillValue value) { return static_cast<WindowColor>(value) & 0xFFFFFF; }

// -1 hollow, 0 solid, from 1 on the hatch patterns of the platform, which counts them from 0.
using FillStyle = std::int32_t;
inline constexpr FillStyle HollowFill = -1;
inline constexpr FillStyle SolidFill = 0;
inline constexpr FillStyle LastHatchedFill = 6;

constexpr FillStyle FillStyleOfPattern(std::int32_t item) { return item - 1; }

enum class BrushKind {
    None,
    Solid,
    Hatched,
};

struct BrushChoice {
    BrushKind kind = BrushKind::None;
    WindowColor color = Black;
    std::int32_t hatch = 0; // HS_HORIZONTAL and on

    bool operator==(const BrushChoice&) const = default;
};

// Styles that there are none of count as solid, and so does hollow, which those who draw shapes turn into NoFill.
constexpr BrushChoice BrushOf(FillValue fill, FillStyle style) {
    if (fill == NoFill) {
        return {};
    }
    const WindowColor color = ColorOfFillValue(fill);
    if (style <= SolidFill || style > LastHatchedFill) {
        return {BrushKind::Solid, color, 0};
    }
    return {BrushKind::Hatched, color, style - 1};
}

} // namespace lumbrix
