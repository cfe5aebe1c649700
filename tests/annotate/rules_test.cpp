// How screen and picture correspond, and what texts and choices mean.
#include "annotate/rules.h"

#include "tests/annotate/expectrectangle.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

TEST(PreviewScale, PictureThatFitsIsNeverEnlarged) {
    EXPECT_EQ(PreviewScaleFor({1, 1}, {642, 383}), 1.0F);
    EXPECT_EQ(PreviewScaleFor({642, 383}, {642, 383}), 1.0F);
}

TEST(PreviewScale, LargerQuotientDecides) {
    EXPECT_EQ(PreviewScaleFor({1284, 100}, {642, 383}), 2.0F);
    EXPECT_EQ(PreviewScaleFor({100, 1149}, {642, 383}), 3.0F);
    EXPECT_EQ(PreviewScaleFor({1284, 1149}, {642, 383}), 3.0F);
    EXPECT_EQ(PreviewScaleFor({643, 383}, {642, 383}), static_cast<float>(643.0 / 642));
}

TEST(PreviewSize, IsRoundedToTheNearestWithTiesToEven) {
    const PixelSize size = PreviewSize({5, 7}, 2.0F);
    EXPECT_EQ(size.width, 2);
    EXPECT_EQ(size.height, 4);
    EXPECT_EQ(PreviewSize({6000, 4000}, static_cast<float>(4000.0 / 383)).height, 383);
    EXPECT_EQ(PreviewSize({640, 300}, 1.0F).height, 300);
}

TEST(FullSize, PlaceAndTextGrowByTheScale) {
    const FloatPoint place = FullSizePoint({10, -3}, 2.5F);
    EXPECT_EQ(place.x, 25.0F);
    EXPECT_EQ(place.y, -7.5F);
    EXPECT_EQ(FullSizeText(10, 1.0F), 10);
    EXPECT_EQ(FullSizeText(5, 2.5F), 12);
    EXPECT_EQ(FullSizeText(7, 2.5F), 18);
}

TEST(StampPath, HasAColonAsItsSecondCharacter) {
    EXPECT_TRUE(IsStampPath("C:\\stamp.png"));
    EXPECT_TRUE(IsStampPath("a:"));
    EXPECT_FALSE(IsStampPath(":"));
    EXPECT_FALSE(IsStampPath("a"));
    EXPECT_FALSE(IsStampPath("ab:"));
    EXPECT_FALSE(IsStampPath("\\\\server\\stamp.png"));
    EXPECT_FALSE(IsStampPath(""));
}

TEST(CropRectangle, IsScaledAndRoundedWithTiesToEven) {
    ExpectRectangle(RectangleBetween({1, 3}, {10, 20}, 2.5F), 2, 8, 25, 50);
    ExpectRectangle(RectangleBetween({10, 20}, {40, 60}, 1.0F), 10, 20, 40, 60);
}

TEST(CropRectangle, CornersAreNotSorted) { ExpectRectangle(RectangleBetween({9, 8}, {-1, 2}, 2.0F), 18, 16, -2, 4); }

TEST(CropRectangle, HasAreaWhereBothEdgesDiffer) {
    EXPECT_TRUE(HasArea({1, 1, 2, 2}));
    EXPECT_TRUE(HasArea({2, 2, 1, 1}));
    EXPECT_FALSE(HasArea({1, 1, 1, 5}));
    EXPECT_FALSE(HasArea({1, 1, 5, 1}));
    EXPECT_FALSE(HasArea({}));
}

TEST(FontChoice, NamelessIsArialAndSemiBoldIsBold) {
    EXPECT_EQ(FontNameOrDefault("Courier New"), "Courier New");
    EXPECT_EQ(FontNameOrDefault(""), "Arial");
    EXPECT_FALSE(IsBoldWeight(400));
    EXPECT_FALSE(IsBoldWeight(599));
    EXPECT_TRUE(IsBoldWeight(600));
}

TEST(SplitColor, RedIsTheLowestByte) {
    std::int32_t red = 0;
    std::int32_t green = 0;
    std::int32_t blue = 0;
    SplitColor(0x00FF8001, &red, &green, &blue);
    EXPECT_EQ(red, 1);
    EXPECT_EQ(green, 128);
    EXPECT_EQ(blue, 255);
}

} // namespace
