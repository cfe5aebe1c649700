// How boxes and ellipses become a rectangle with rounded corners.
#include "draw/shape.h"

#include <algorithm>
#include <utility>

namespace lumbrix {

namespace {

std::pair<std::int32_t, std::int32_t> Ordered(std::int32_t one, std::int32_t other) {
    const auto [least, greatest] = std::minmax({static_cast<std::uint32_t>(one), static_cast<std::uint32_t>(other)});
    return {static_cast<std::int32_t>(least), static_cast<std::int32_t>(greatest)};
}

} // namespace

RoundedRectangle RoundedRectangleOf(const Shape& shape) {
    const auto [left, right] = Ordered(shape.from.x, shape.to.x);
    const auto [top, bottom] = Ordered(shape.from.y, shape.to.y);
    const PixelRectangle edges{left, top, right, bottom};
    if (shape.corner == EllipseCorner) {
        return {edges, edges.Width() + 1, edges.Height() + 1};
    }
    const std::int64_t percent = std::min(shape.corner, MostCorner);
    const auto rounding = static_cast<std::int32_t>(std::min(edges.Width(), edges.Height()) * percent / 100);
    return {edges, rounding, rounding};
}

} // namespace lumbrix
