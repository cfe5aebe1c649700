// How numbers with fractions become whole ones.
#include "imaging/rounding.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace lumbrix;

TEST(Rounding, IsToTheNearest) {
    EXPECT_EQ(RoundToEven(2.4), 2);
    EXPECT_EQ(RoundToEven(2.6), 3);
    EXPECT_EQ(RoundToEven(-2.6), -3);
    EXPECT_EQ(RoundToEven(7), 7);
}

TEST(Rounding, TiesGoToTheEvenOne) {
    EXPECT_EQ(RoundToEven(0.5), 0);
    EXPECT_EQ(RoundToEven(1.5), 2);
    EXPECT_EQ(RoundToEven(2.5), 2);
    EXPECT_EQ(RoundToEven(-2.5), -2);
    EXPECT_EQ(RoundToEven(-3.5), -4);
}

TEST(Rounding, StaysWithinThirtyTwoBits) {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RoundToEven(2147483647.4), INT32_MAX);
    EXPECT_EQ(RoundToEven(1e20), INT32_MAX);
    EXPECT_EQ(RoundToEven(Infinity), INT32_MAX);
    EXPECT_EQ(RoundToEven(-2147483648.4), INT32_MIN);
    EXPECT_EQ(RoundToEven(-1e20), INT32_MIN);
    EXPECT_EQ(RoundToEven(-Infinity), INT32_MIN);
}

TEST(Rounding, WhatIsNoNumberBecomesTheLowest) {
    EXPECT_EQ(RoundToEven(std::numeric_limits<double>::quiet_NaN()), INT32_MIN);
}

} // namespace
