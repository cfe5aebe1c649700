// A crop rectangle edge by edge.
#pragma once

#include "base/geometry.h"

#include <gtest/gtest.h>

namespace tests {

inline void ExpectRectangle(const lumbrix::PixelRectangle& rectangle, std::int32_t left, std::int32_t top,
                            std::int32_t right, std::int32_t bottom) {
    EXPECT_EQ(rectangle.left, left);
    EXPECT_EQ(rectangle.top, top);
    EXPECT_EQ(rectangle.right, right);
    EXPECT_EQ(rectangle.bottom, bottom);
}

} // namespace tests
