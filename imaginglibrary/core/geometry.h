// Points, whole-pixel rectangles and affine maps.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace imaginglibrary {

struct Point {
    double x = 0;
    double y = 0;
};

// Pixels from `left` and `top` up to, not including, `right` and `bottom`.
struct PixelRect {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;

    std::int64_t Width() const { return right - left; }
    std::int64_t Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool operator==(const PixelRect&) const = default;
};

constexpr PixelRect Intersection(const PixelRect& a, const PixelRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

// x' = xx * x + xy * y + dx, y' = yx * x + yy * y + dy, with y growing downwards.
struct Affine {
    double xx = 1, yx = 0;
    double xy = 0, yy = 1;
    double dx = 0, dy = 0;

    static Affine Translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }
    static Affine Scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }

    // Clockwise on the screen.
    static Affine Rotation(double radians) {
        return {std::cos(radians), std::sin(radians), -std::sin(radians), std::cos(radians), 0, 0};
    }

    Point operator()(Point point) const { return {xx * point.x + xy * point.y + dx, yx * point.x + yy * point.y + dy}; }

    // This map first, then the other.
    Affine Then(const Affine& next) const {
        const Point origin = next({dx, dy});
        return {next.xx * xx + next.xy * yx,
                next.yx * xx + next.yy * yx,
                next.xx * xy + next.xy * yy,
                next.yx * xy + next.yy * yy,
                origin.x,
                origin.y};
    }

    // Nothing where the map flattens the plane.
    std::optional<Affine> Inverse() const {
        const double determinant = xx * yy - xy * yx;
        if (!std::isfinite(determinant) || std::abs(determinant) < 1e-12) {
            return std::nullopt;
        }
        Affine inverse{yy / determinant, -yx / determinant, -xy / determinant, xx / determinant, 0, 0};
        const Point origin = inverse({dx, dy});
        inverse.dx = -origin.x;
        inverse.dy = -origin.y;
        return inverse;
    }
};

} // namespace imaginglibrary
