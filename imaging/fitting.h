// The size that a picture gets where a side, a box or a percentage is asked for.
#pragma once

#include "base/geometry.h"

#include <cstdint>

namespace lumbrix {

// The width that keeps the proportions at a height: the proportions as a 32-bit float, times the height, rounded to the
// nearest whole number, ties to the even one.
std::int32_t ResizedWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height);

// 0 is what is not asked for. A height, a width, a box of both, or a percentage of both sides.
struct Fitting {
    std::int32_t height = 0; // pixels
    std::int32_t width = 0;
    double percent = 0;
};

// Whether it asks for one of these forms, and for numbers above 0.
bool IsMeaningful(const Fitting& fitting);

// The size that a picture gets by a fitting that is meaningful. Of a single side the other follows as above, whichever
// it is; in a box that holds for the side at which there is room left. No side is less than a pixel.
PixelSize FittedSize(PixelSize picture, const Fitting& fitting);

// Whether a picture need not be made smaller: no side that is asked for is exceeded, or the percentage is at least 100.
bool IsSmallEnough(PixelSize picture, const Fitting& fitting);

} // namespace lumbrix
