// Boxes and ellipses: one rectangle with more or less rounded corners.
#pragma once

#include "base/geometry.h"
#include "draw/fillstyle.h"
#include "toolkit/layout.h"

#include <cstdint>

namespace lumbrix {

// How round the corners are: in percent of the shorter side, or wholly.
using CornerValue = std::uint32_t;
inline constexpr CornerValue EllipseCorner = 0x80000000;
inline constexpr CornerValue MostCorner = 100; // greater ones count as this

struct Shape {
    PixelPoint from; // any two corners opposite each other
    PixelPoint to;
    CornerValue corner = 0;
    WindowColor penColor = Black;
    FillValue fillColor = NoFill;
    FillStyle fillStyle = SolidFill; // for BrushOf

    bool operator==(const Shape&) const = default;
};

// As the platform's RoundRect takes it.
struct RoundedRectangle {
    PixelRectangle edges;
    std::int32_t roundingWidth = 0;
    std::int32_t roundingHeight = 0;

    bool operator==(const RoundedRectangle&) const = default;
};

// The corners are ordered as numbers without a sign, so a place left of or above the canvas counts as the greater one.
RoundedRectangle RoundedRectangleOf(const Shape& shape);

} // namespace lumbrix
