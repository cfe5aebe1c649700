// A crop rectangle from what was typed.
#include "annotate/typedrectangle.h"

#include "tests/annotate/rectangles.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

TEST(TypedRectangle, ReachesFromTheCornerByTheSizes) {
    ExpectRectangle(TypedRectangle("10", "20", "30", "40"), 10, 20, 40, 60);
}

TEST(TypedRectangle, TiesGoToTheEvenNumber) {
    ExpectRectangle(TypedRectangle("0", "0", "2.5", "3.5"), 0, 0, 2, 4);
    ExpectRectangle(TypedRectangle("2.5", "3.5", "0", "0"), 2, 4, 2, 4);
}

TEST(TypedRectangle, SumsAreMadeBeforeTheyAreRounded) {
    ExpectRectangle(TypedRectangle("0.4", "0.6", "0.4", "0.6"), 0, 1, 1, 1);
    ExpectRectangle(TypedRectangle("0.5", "1.5", "2", "2"), 0, 2, 2, 4);
}

TEST(TypedRectangle, NegativeNumbersPassThrough) {
    ExpectRectangle(TypedRectangle("-10", "-2.5", "5", "-4"), -10, -2, -5, -6);
}

TEST(TypedRectangle, EmptyBoxesGiveAnEmptyRectangle) { ExpectRectangle(TypedRectangle("", "", "", ""), 0, 0, 0, 0); }

TEST(TypedRectangle, WhatIsNoNumberCountsAsZero) {
    ExpectRectangle(TypedRectangle("left", "20 pixels", "x3", " 4"), 0, 20, 0, 24);
}

TEST(TypedRectangle, StaysWithinThirtyTwoBits) {
    ExpectRectangle(TypedRectangle("1", "-1", "2147483647", "-2147483648"), 1, -1, INT32_MAX, INT32_MIN);
    ExpectRectangle(TypedRectangle("1e10", "0", "-1e10", "1e999"), INT32_MAX, 0, 0, INT32_MAX);
}

} // namespace
