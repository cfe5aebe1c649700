// The two sliders of the Free Edit window.
#include "freeedit/sliders.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(Sliders, StretchIsShownWithTwoDigitsBehindThePoint) {
    EXPECT_EQ(StretchText(100), "Stretch: 1.00");
    EXPECT_EQ(StretchText(0), "Stretch: 0.00");
    EXPECT_EQ(StretchText(7), "Stretch: 0.07");
    EXPECT_EQ(StretchText(99), "Stretch: 0.99");
    EXPECT_EQ(StretchText(210), "Stretch: 2.10");
    EXPECT_EQ(StretchText(500), "Stretch: 5.00");
}

TEST(Sliders, RotationIsShownInWholeDegrees) {
    EXPECT_EQ(RotationText(0), "Rotate: 0");
    EXPECT_EQ(RotationText(180), "Rotate: 180");
    EXPECT_EQ(RotationText(-7), "Rotate: -7");
}

TEST(Sliders, PositionIsAHundredthOfTheStretch) {
    EXPECT_EQ(StretchOfPosition(500), 5.0f);
    EXPECT_EQ(StretchOfPosition(115), 1.15f);
    EXPECT_EQ(StretchOfPosition(0), 0.0f);
}

TEST(Sliders, FourOfTheirEventsCount) {
    for (const int code : {2, 3, 5, 8}) { // page up, page down, the thumb moved, the end
        EXPECT_TRUE(IsSliderMove(code)) << code;
    }
    for (const int code : {0, 1, 4, 6, 7, 9}) { // lines, the thumb released, the ends
        EXPECT_FALSE(IsSliderMove(code)) << code;
    }
}

TEST(Sliders, RangesAreHundredthsAndDegrees) {
    EXPECT_EQ(StretchRange.least, 0);
    EXPECT_EQ(StretchRange.most, 500);
    EXPECT_EQ(StretchRange.start, 100);
    EXPECT_EQ(RotationRange.least, -180);
    EXPECT_EQ(RotationRange.most, 180);
    EXPECT_EQ(RotationRange.start, 0);
}

} // namespace
