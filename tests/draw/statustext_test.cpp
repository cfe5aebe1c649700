// What the status label says, to the blank.
#include "draw/statustext.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(PlaceStatusText, HasABlankInThePlaceOfAMissingSign) {
    EXPECT_EQ(PlaceStatus({12, 34}), "Pos: 12, 34");
    EXPECT_EQ(PlaceStatus({0, 0}), "Pos: 0, 0");
    EXPECT_EQ(PlaceStatus({-1, 34}), "Pos:-1, 34");
    EXPECT_EQ(PlaceStatus({12, -34}), "Pos: 12,-34");
}

TEST(EndsStatusText, HasBothPlaces) {
    EXPECT_EQ(EndsStatus({1, 2}, {30, 40}), "Pos: 1, 2  -  30, 40");
    EXPECT_EQ(EndsStatus({1, 2}, {-30, -40}), "Pos: 1, 2  - -30,-40");
}

TEST(SizeStatusText, HasTheDistanceInASecondLine) {
    EXPECT_EQ(SizeStatus({10, 20}, {13, 80}), "Pos: 10, 20  -  13, 80\r\nSize: 3 x 60");
    EXPECT_EQ(SizeStatus({10, 20}, {-5, 13}), "Pos: 10, 20  - -5, 13\r\nSize: 15 x 7");
    EXPECT_EQ(SizeStatus({10, 20}, {10, 20}), "Pos: 10, 20  -  10, 20\r\nSize: 0 x 0");
}

} // namespace
