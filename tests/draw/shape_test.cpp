// How boxes and ellipses become rounded rectangles.
#include "draw/shape.h"

#include <gtest/gtest.h>

namespace lumbrix {

void PrintTo(const RoundedRectangle& rectangle, std::ostream* stream) {
    const PixelRectangle& edges = rectangle.edges;
    *stream << edges.left << ',' << edges.top << " to " << edges.right << ',' << edges.bottom << ", rounded "
            << rectangle.roundingWidth << 'x' << rectangle.roundingHeight;
}

} // namespace lumbrix

namespace {

using namespace lumbrix;

RoundedRectangle Rounded(PixelPoint from, PixelPoint to, CornerValue corner) {
    return RoundedRectangleOf({.from = from, .to = to, .corner = corner});
}

TEST(RoundedRectangle, OrdersItsCorners) {
    const RoundedRectangle expected{{10, 20, 50, 80}, 0, 0};
    EXPECT_EQ(Rounded({10, 20}, {50, 80}, 0), expected);
    EXPECT_EQ(Rounded({50, 80}, {10, 20}, 0), expected);
    EXPECT_EQ(Rounded({10, 80}, {50, 20}, 0), expected);
    EXPECT_EQ(Rounded({50, 20}, {10, 80}, 0), expected);
}

TEST(RoundedRectangle, TakesAPlaceLeftOfTheCanvasForTheRightOne) {
    EXPECT_EQ(Rounded({10, 20}, {-1, 80}, 0).edges, (PixelRectangle{10, 20, -1, 80}));
    EXPECT_EQ(Rounded({-1, 20}, {0, 80}, 0).edges, (PixelRectangle{0, 20, -1, 80}));
    EXPECT_EQ(Rounded({-7, 20}, {-3, 80}, 0).edges, (PixelRectangle{-7, 20, -3, 80}));
}

TEST(RoundedRectangle, TakesAPlaceAboveTheCanvasForTheLowerOne) {
    EXPECT_EQ(Rounded({10, 20}, {30, -1}, 0).edges, (PixelRectangle{10, 20, 30, -1}));
    EXPECT_EQ(Rounded({10, -3}, {30, -7}, 0).edges, (PixelRectangle{10, -7, 30, -3}));
}

TEST(RoundedRectangle, IsRoundedByAPartOfTheShorterSide) {
    EXPECT_EQ(Rounded({10, 20}, {60, 320}, 20), (RoundedRectangle{{10, 20, 60, 320}, 10, 10}));
    EXPECT_EQ(Rounded({10, 20}, {310, 70}, 20), (RoundedRectangle{{10, 20, 310, 70}, 10, 10}));
}

TEST(RoundedRectangle, IsRoundedInWholePixels) {
    EXPECT_EQ(Rounded({0, 0}, {49, 300}, 20).roundingWidth, 9);
    EXPECT_EQ(Rounded({0, 0}, {49, 300}, 20).roundingHeight, 9);
    EXPECT_EQ(Rounded({0, 0}, {4, 4}, 20).roundingWidth, 0);
    EXPECT_EQ(Rounded({0, 0}, {5, 5}, 20).roundingWidth, 1);
}

TEST(RoundedRectangle, IsRoundedByTheWholeShorterSideAtMost) {
    EXPECT_EQ(Rounded({0, 0}, {50, 300}, 99).roundingWidth, 49);
    EXPECT_EQ(Rounded({0, 0}, {50, 300}, 100).roundingWidth, 50);
    EXPECT_EQ(Rounded({0, 0}, {50, 300}, 102).roundingWidth, 50);
    EXPECT_EQ(Rounded({0, 0}, {50, 300}, 0x7FFFFFFF).roundingWidth, 50);
    EXPECT_EQ(Rounded({0, 0}, {50, 300}, 0x80000001).roundingWidth, 50);
}

TEST(RoundedRectangle, OfAnEllipseIsRoundedByOneMoreThanItsSides) {
    EXPECT_EQ(Rounded({50, 80}, {10, 20}, 0x80000000), (RoundedRectangle{{10, 20, 50, 80}, 41, 61}));
    EXPECT_EQ(Rounded({10, 20}, {10, 20}, 0x80000000), (RoundedRectangle{{10, 20, 10, 20}, 1, 1}));
}

// The sides are then below 0.
TEST(RoundedRectangle, BeyondTheCanvasIsRoundedByASideBelowNone) {
    EXPECT_EQ(Rounded({10, 20}, {-15, 80}, EllipseCorner), (RoundedRectangle{{10, 20, -15, 80}, -24, 61}));
    EXPECT_EQ(Rounded({10, 20}, {-15, 80}, 20), (RoundedRectangle{{10, 20, -15, 80}, -5, -5}));
}

} // namespace
