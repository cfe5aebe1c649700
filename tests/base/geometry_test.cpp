// Places, sizes and rectangles in pixels.
#include "base/geometry.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(Geometry, SizesOfARectangleAreItsDifferences) {
    const PixelRectangle drawnUpwards{40, 25, 10, 5};
    EXPECT_EQ(drawnUpwards.Width(), -30);
    EXPECT_EQ(drawnUpwards.Height(), -20);
    EXPECT_EQ((PixelRectangle{1, 2, 4, 8}.Width()), 3);
    EXPECT_EQ((PixelRectangle{1, 2, 4, 8}.Height()), 6);
}

TEST(Geometry, SizesBeyondThirtyTwoBitsComeOutAtTheOtherEnd) {
    EXPECT_EQ((PixelRectangle{-1, 0, INT32_MAX, 0}.Width()), INT32_MIN);
    EXPECT_EQ((PixelRectangle{0, 2, 0, INT32_MIN}.Height()), INT32_MAX - 1);
}

TEST(Geometry, EveryNumberCountsInComparisons) {
    const PixelRectangle one{1, 2, 3, 4};
    EXPECT_EQ(one, (PixelRectangle{1, 2, 3, 4}));
    for (const PixelRectangle& other : {PixelRectangle{0, 2, 3, 4}, {1, 0, 3, 4}, {1, 2, 0, 4}, {1, 2, 3, 0}}) {
        EXPECT_NE(one, other);
    }
    EXPECT_NE((PixelPoint{1, 2}), (PixelPoint{1, 3}));
    EXPECT_NE((PixelSize{1, 2}), (PixelSize{2, 2}));
    EXPECT_NE((FloatPoint{1, 2}), (FloatPoint{1, 2.5F}));
}

} // namespace
