// Places, sizes and rectangles in pixels.
#pragma once

#include <array>
#include <cstdint>

namespace lumbrix {

struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const PixelPoint&) const = default;
};

struct PixelSize {
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(const PixelSize&) const = default;
};

// Right and bottom are not part of it. Nothing says that they are beyond left and top.
struct PixelRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    // Within 32 bits, so what is too far apart comes out at the other end.
    std::int32_t Width() const { return Difference(right, left); }
    std::int32_t Height() const { return Difference(bottom, top); }

    bool operator==(const PixelRectangle&) const = default;

  private:
    static std::int32_t Difference(std::int32_t to, std::int32_t from) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from));
    }
};

// Where the upper left, upper right and lower left corners of a picture go. The fourth corner follows from them.
using CornerPoints = std::array<PixelPoint, 3>;

// A place between pixels.
struct FloatPoint {
    float x = 0;
    float y = 0;

    bool operator==(const FloatPoint&) const = default;
};

} // namespace lumbrix
