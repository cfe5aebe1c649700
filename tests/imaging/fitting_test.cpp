// The sizes that pictures get: by a side, in a box and by percentages.
#include "imaging/fitting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace lumbrix;

constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();

TEST(Fitting, HeightAndWidthKeepTheProportions) {
    EXPECT_EQ(FittedSize({3000, 2000}, {.height = 100}), (PixelSize{150, 100}));
    EXPECT_EQ(FittedSize({3000, 2000}, {.width = 150}), (PixelSize{150, 100}));
    EXPECT_EQ(FittedSize({30, 20}, {.height = 200}), (PixelSize{300, 200}));
}

TEST(Fitting, TiesGoToTheEvenOneOnEitherSide) {
    EXPECT_EQ(FittedSize({5, 2}, {.height = 1}), (PixelSize{2, 1})); // 2.5
    EXPECT_EQ(FittedSize({5, 2}, {.height = 3}), (PixelSize{8, 3})); // 7.5
    EXPECT_EQ(FittedSize({2, 5}, {.width = 1}), (PixelSize{1, 2}));
    EXPECT_EQ(FittedSize({2, 5}, {.width = 3}), (PixelSize{3, 8}));
    EXPECT_EQ(FittedSize({5, 3}, {.percent = 50}), (PixelSize{2, 2})); // 2.5 and 1.5
    EXPECT_EQ(FittedSize({1, 3}, {.percent = 250}), (PixelSize{2, 8}));
}

TEST(Fitting, WidthFollowsTheProportionsAsAFloat) {
    EXPECT_EQ(FittedSize({2, 3}, {.height = 30000000}), (PixelSize{20000001, 30000000}));
    EXPECT_EQ(FittedSize({3, 2}, {.width = 30000000}), (PixelSize{30000000, 20000001}));
}

TEST(Fitting, BoxIsFilledOnTheSideThatIsShort) {
    EXPECT_EQ(FittedSize({400, 200}, {.height = 100, .width = 100}), (PixelSize{100, 50}));
    EXPECT_EQ(FittedSize({200, 400}, {.height = 100, .width = 100}), (PixelSize{50, 100}));
    EXPECT_EQ(FittedSize({400, 200}, {.height = 50, .width = 100}), (PixelSize{100, 50}));
    EXPECT_EQ(FittedSize({400, 200}, {.height = 49, .width = 100}), (PixelSize{98, 49}));
    EXPECT_EQ(FittedSize({400, 200}, {.height = 1000, .width = 800}), (PixelSize{800, 400})) << "it enlarges";
}

TEST(Fitting, NeverLeavesTheBoxWhateverAFloatMakesOfIt) {
    // 2 / 3 as a float is larger, so 2,000,000,000 of it are 1,333,333,373.
    EXPECT_EQ(FittedSize({3, 2}, {.height = 1333333334, .width = 2000000000}), (PixelSize{2000000000, 1333333334}));
    EXPECT_EQ(FittedSize({2, 3}, {.height = 2000000000, .width = 1333333334}), (PixelSize{1333333334, 2000000000}));
}

TEST(Fitting, NoSideIsLessThanAPixel) {
    EXPECT_EQ(FittedSize({1, 30000}, {.height = 100}), (PixelSize{1, 100}));
    EXPECT_EQ(FittedSize({30000, 1}, {.width = 100}), (PixelSize{100, 1}));
    EXPECT_EQ(FittedSize({30000, 1}, {.height = 10, .width = 10}), (PixelSize{10, 1}));
    EXPECT_EQ(FittedSize({1, 30000}, {.height = 10, .width = 10}), (PixelSize{1, 10}));
    EXPECT_EQ(FittedSize({640, 480}, {.percent = 0.001}), (PixelSize{1, 1}));
}

TEST(Fitting, PercentagesAreOfBothSides) {
    EXPECT_EQ(FittedSize({640, 480}, {.percent = 100}), (PixelSize{640, 480}));
    EXPECT_EQ(FittedSize({640, 480}, {.percent = 250}), (PixelSize{1600, 1200}));
    EXPECT_EQ(FittedSize({640, 481}, {.percent = 12.5}), (PixelSize{80, 60}));
    EXPECT_EQ(FittedSize({100000, 1}, {.percent = 0.001}), (PixelSize{1, 1}));
    EXPECT_EQ(FittedSize({300000, 1}, {.percent = 0.001}), (PixelSize{3, 1}));
}

TEST(Fitting, WhatIsBeyondEveryNumberIsTheLargest) {
    EXPECT_EQ(FittedSize({640, 480}, {.percent = 1e300}), (PixelSize{Most, Most}));
    EXPECT_EQ(FittedSize({65535, 1}, {.height = Most}), (PixelSize{Most, Most}));
}

TEST(Fitting, MeansOneFormAndNumbersAboveZero) {
    EXPECT_TRUE(IsMeaningful({.height = 1}));
    EXPECT_TRUE(IsMeaningful({.width = 1}));
    EXPECT_TRUE(IsMeaningful({.height = 1, .width = 1}));
    EXPECT_TRUE(IsMeaningful({.percent = 0.001}));
    EXPECT_FALSE(IsMeaningful({}));
    EXPECT_FALSE(IsMeaningful({.height = 1, .percent = 1}));
    EXPECT_FALSE(IsMeaningful({.width = 1, .percent = 1}));
    EXPECT_FALSE(IsMeaningful({.height = -1}));
    EXPECT_FALSE(IsMeaningful({.height = 1, .width = -1}));
    EXPECT_FALSE(IsMeaningful({.height = -1, .width = 1}));
    EXPECT_FALSE(IsMeaningful({.percent = -1}));
    EXPECT_FALSE(IsMeaningful({.percent = std::nan("")}));
    EXPECT_FALSE(IsMeaningful({.percent = std::numeric_limits<double>::infinity()}));
}

TEST(Fitting, SmallEnoughIsWhatExceedsNoSideThatIsAskedFor) {
    constexpr PixelSize Picture{40, 20};
    EXPECT_TRUE(IsSmallEnough(Picture, {.height = 20}));
    EXPECT_FALSE(IsSmallEnough(Picture, {.height = 19}));
    EXPECT_TRUE(IsSmallEnough(Picture, {.width = 40}));
    EXPECT_FALSE(IsSmallEnough(Picture, {.width = 39}));
    EXPECT_TRUE(IsSmallEnough(Picture, {.height = 20, .width = 40}));
    EXPECT_FALSE(IsSmallEnough(Picture, {.height = 19, .width = 40}));
    EXPECT_FALSE(IsSmallEnough(Picture, {.height = 20, .width = 39}));
    EXPECT_TRUE(IsSmallEnough(Picture, {.percent = 100}));
    EXPECT_FALSE(IsSmallEnough(Picture, {.percent = 99.99}));
}

} // namespace
