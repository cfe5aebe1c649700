// Styles of fonts as bits, and back.
#include "toolkit/fontresult.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(FontStyle, HasABitForEachOfItsFour) {
    EXPECT_EQ(StyleOf({.weight = 700}), 1);
    EXPECT_EQ(StyleOf({.weight = 699}), 0);
    EXPECT_EQ(StyleOf({.weight = 400, .italic = 255}), 2);
    EXPECT_EQ(StyleOf({.weight = 400, .underline = 1}), 4);
    EXPECT_EQ(StyleOf({.weight = 400, .strikeout = 1}), 8);
    EXPECT_EQ(StyleOf({.weight = 900, .italic = 1, .underline = 1, .strikeout = 1}), 15);
    EXPECT_EQ(StyleOf({}), 0);
}

TEST(FontStyle, BoldIsAWeight) {
    EXPECT_EQ(WeightOfStyle(1), 700);
    EXPECT_EQ(WeightOfStyle(15), 700);
    EXPECT_EQ(WeightOfStyle(14), 400);
    EXPECT_EQ(WeightOfStyle(0), 400);
}

} // namespace
