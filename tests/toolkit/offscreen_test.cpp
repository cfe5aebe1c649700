// A picture in memory to draw on.
#include "toolkit/offscreen.h"

#include "tests/support/resources.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace lumbrix;
using FirstRow = OffscreenPicture::FirstRow;

TEST(Offscreen, RowsOf24BitsTakeAMultipleOfFourBytesAndBeginAtTheBottom) {
    const OffscreenPicture picture({3, 2}, 24);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture.Size(), (PixelSize{3, 2}));
    ASSERT_EQ(picture.Pixels().size(), 24u);
    EXPECT_EQ(std::count(picture.Pixels().begin(), picture.Pixels().end(), 0), 24) << "black at first";
    SetPixel(picture.Context(), 1, 0, RGB(10, 20, 30));
    const auto pixels = picture.Pixels();
    EXPECT_EQ(pixels[12 + 3], 30);
    EXPECT_EQ(pixels[12 + 4], 20);
    EXPECT_EQ(pixels[12 + 5], 10);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0), 21);
}

TEST(Offscreen, MayBeginAtTheTopWith32Bits) {
    const OffscreenPicture picture({3, 2}, 32, FirstRow::Top);
    ASSERT_EQ(picture.Pixels().size(), 24u);
    SetPixel(picture.Context(), 1, 0, RGB(10, 20, 30));
    EXPECT_EQ(picture.Pixels()[4], 30);
    EXPECT_EQ(picture.Pixels()[6], 10);
}

TEST(Offscreen, PixelsThatAreWrittenAreSeenByDrawing) {
    const OffscreenPicture picture({3, 2}, 24);
    picture.Pixels()[0] = 200;
    EXPECT_EQ(GetPixel(picture.Context(), 0, 1), RGB(0, 0, 200));
}

TEST(Offscreen, OneWithoutAreaIsFalse) {
    const OffscreenPicture picture({0, 5}, 24);
    EXPECT_FALSE(picture);
    EXPECT_TRUE(picture.Pixels().empty());
}

TEST(Offscreen, GivesBackWhatItTook) {
    const int before = tests::CountGdiObjects();
    for (int i = 0; i < 50; ++i) {
        const OffscreenPicture picture({30, 20}, 24);
    }
    EXPECT_LE(tests::CountGdiObjects(), before);
    // Handles run out well before this.
    for (int i = 0; i < 70000; ++i) {
        const OffscreenPicture picture({1, 1}, 24);
        ASSERT_TRUE(picture) << i;
    }
}

} // namespace
