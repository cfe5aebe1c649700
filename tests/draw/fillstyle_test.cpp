// Which brush belongs to which fill.
#include "draw/fillstyle.h"

#include <gtest/gtest.h>

namespace lumbrix {

void PrintTo(const BrushChoice& brush, std::ostream* stream) {
    *stream << static_cast<int>(brush.kind) << " in " << brush.color << ", hatch " << brush.hatch;
}

} // namespace lumbrix

namespace {

using namespace lumbrix;

constexpr FillValue Orange = 0x0080FF;

TEST(FillStyleOfAPattern, IsItsPlaceLessOne) {
    EXPECT_EQ(FillStyleOfPattern(0), -1);
    EXPECT_EQ(FillStyleOfPattern(1), 0);
    EXPECT_EQ(FillStyleOfPattern(7), 6);
}

TEST(Brush, OfNoFillIsNoneWhateverTheStyle) {
    for (const FillStyle style : {-1, 0, 1, 6}) {
        EXPECT_EQ(BrushOf(-2, style), (BrushChoice{BrushKind::None, 0x000000, 0})) << style;
    }
}

TEST(Brush, OfStyleNoneIsSolid) { EXPECT_EQ(BrushOf(Orange, 0), (BrushChoice{BrushKind::Solid, 0x0080FF, 0})); }

TEST(Brush, BelowStyleNoneIsSolid) { EXPECT_EQ(BrushOf(Orange, -1), (BrushChoice{BrushKind::Solid, 0x0080FF, 0})); }

TEST(Brush, OfStylesOneToSixIsHatchedFromNoneOn) {
    for (FillStyle style = 1; style <= 6; ++style) {
        EXPECT_EQ(BrushOf(Orange, style), (BrushChoice{BrushKind::Hatched, 0x0080FF, style - 1}));
    }
}

TEST(Brush, BeyondStyleSixIsSolid) { EXPECT_EQ(BrushOf(Orange, 7), (BrushChoice{BrushKind::Solid, 0x0080FF, 0})); }

TEST(Brush, OfBlackIsThere) { EXPECT_EQ(BrushOf(0, 0), (BrushChoice{BrushKind::Solid, 0x000000, 0})); }

TEST(FillValue, OfNoFillIsANearWhiteAsAColor) { EXPECT_EQ(ColorOfFillValue(-2), 0xFFFFFEu); }

TEST(FillValue, OfAColorIsThatColor) {
    EXPECT_EQ(ColorOfFillValue(FillValueOf(0xFFFFFF)), 0xFFFFFFu);
    EXPECT_EQ(ColorOfFillValue(FillValueOf(0x123456)), 0x123456u);
}

} // namespace
