// How numbers with fractions become whole ones, and texts numbers.
#include "base/numbers.h"

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

TEST(LeadingNumber, KeepsItsFraction) {
    EXPECT_EQ(LeadingNumber("2.5"), 2.5);
    EXPECT_EQ(LeadingNumber(" -0.25 pixels"), -0.25);
    EXPECT_EQ(LeadingNumber("1e-2"), 0.01);
}

TEST(LeadingNumber, IsNotBoundToThirtyTwoBits) { EXPECT_EQ(LeadingNumber("99999999999"), 99999999999.0); }

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
    for (const char* text : {"", "abc", "-", ".", "x2", "inf", "nan"}) {
        EXPECT_EQ(LeadingNumber(text), 0) << text;
    }
}

TEST(NumericValue, ReadsTheLeadingNumber) {
    const std::pair<const char*, std::int32_t> values[] = {{"512", 512},
                                                           {"  50 pixels", 50},
                                                           {"12abc", 12},
                                                           {"-7", -7},
                                                           {"+8", 8},
                                                           {"3.7", 4},
                                                           {"1e2", 100},
                                                           {"1e", 1},
                                                           {".6", 1},
                                                           {"7.", 7},
                                                           {"", 0},
                                                           {"abc", 0},
                                                           {"-", 0},
                                                           {"x12", 0},
                                                           {"1,5", 1},
                                                           {"0x10", 0},
                                                           {" ", 0},
                                                           {"inf", 0},
                                                           {"99999999999", INT32_MAX},
                                                           {"-99999999999", INT32_MIN}};
    for (const auto& [text, value] : values) {
        EXPECT_EQ(NumericValue(text), value) << text;
    }
}

TEST(NumericValue, TiesGoToTheEvenOne) {
    EXPECT_EQ(NumericValue("2.5"), 2);
    EXPECT_EQ(NumericValue("3.5"), 4);
    EXPECT_EQ(NumericValue("-2.5"), -2);
}

TEST(NumberWithLeadingBlank, HasTheBlankWhereNoSignIs) {
    EXPECT_EQ(NumberWithLeadingBlank(0), " 0");
    EXPECT_EQ(NumberWithLeadingBlank(12), " 12");
    EXPECT_EQ(NumberWithLeadingBlank(-1), "-1");
    EXPECT_EQ(NumberWithLeadingBlank(INT32_MIN), "-2147483648");
}

} // namespace
