// Where the mouse is, as its messages carry it.
#include "toolkit/mousepoint.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(MousePoint, LowerHalfIsAcrossAndUpperHalfDown) {
    EXPECT_EQ(SignedMousePoint(0x00020001), (PixelPoint{1, 2}));
    EXPECT_EQ(UnsignedMousePoint(0x00020001), (PixelPoint{1, 2}));
}

TEST(MousePoint, LeftOfAndAboveTheWindowTheTwoDiffer) {
    EXPECT_EQ(SignedMousePoint(0xFFFE8000), (PixelPoint{-32768, -2}));
    EXPECT_EQ(UnsignedMousePoint(0xFFFE8000), (PixelPoint{32768, 65534}));
    EXPECT_EQ(SignedMousePoint(0x7FFF7FFF), (PixelPoint{32767, 32767}));
}

} // namespace
