// A colour replaced by masks and raster operations.
#include "draw/iconpixels.h"

#include "draw/iconmonochrome.h"
#include "tests/support/fakemessages.h"
#include "toolkit/offscreen.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

constexpr COLORREF Grey = RGB(197, 197, 197);
constexpr COLORREF Orange = RGB(250, 120, 10);
constexpr PixelSize TooWide{0x8000000, 2};

// A picture of 6 by 4 pixels, grey where x is even, and of a colour of its own everywhere else.
class ColorMasks : public testing::Test {
  protected:
    static constexpr PixelSize Size{6, 4};

    ColorMasks() {
        for (int y = 0; y < Size.height; ++y) {
            for (int x = 0; x < Size.width; ++x) {
                SetPixel(source_.Context(), x, y, ColorAt(x, y));
                SetPixel(target_.Context(), x, y, RGB(1, 2, 3));
                SetPixel(background_.Context(), x, y, RGB(x, y, 99));
            }
        }
    }

    static COLORREF ColorAt(int x, int y) { return x % 2 == 0 ? Grey : RGB(40 * x, 60 * y, 77); }

    // The middle of the picture.
    PictureRegion Region() const { return {source_.Context(), {2, 1}, {3, 2}}; }
    static bool IsInRegion(int x, int y) { return x >= 2 && x < 5 && y >= 1 && y < 3; }

    // Expects a colour at each grey pixel of the region, the source's at each other, and nothing new around it.
    void ExpectTarget(const std::function<COLORREF(int x, int y)>& inPlaceOfGrey) {
        for (int y = 0; y < Size.height; ++y) {
            for (int x = 0; x < Size.width; ++x) {
                const COLORREF changed = x % 2 == 0 ? inPlaceOfGrey(x, y) : ColorAt(x, y);
                EXPECT_EQ(GetPixel(target_.Context(), x, y), IsInRegion(x, y) ? changed : RGB(1, 2, 3))
                    << x << ", " << y;
            }
        }
    }

    const OffscreenPicture source_{Size, 24};
    const OffscreenPicture target_{Size, 24};
    const OffscreenPicture background_{Size, 24};
    tests::FakeMessages messages_;
};

TEST_F(ColorMasks, ChangePixelsCopiesARegionWithOneColorInThePlaceOfAnother) {
    EXPECT_TRUE(ChangePixels(Region(), {Grey, Orange}, target_.Context(), messages_));
    ExpectTarget([](int, int) { return Orange; });
    EXPECT_EQ(GetPixel(source_.Context(), 2, 1), Grey) << "the source stays as it is";
}

TEST_F(ColorMasks, ChangePixelsLeavesOtherColorsAlone) {
    EXPECT_TRUE(ChangePixels(Region(), {RGB(197, 197, 196), Orange}, target_.Context(), messages_));
    ExpectTarget([](int, int) { return Grey; });
}

TEST_F(ColorMasks, ChangePixelsSaysThatItHasNoPictureForTheNewColor) {
    EXPECT_FALSE(ChangePixels({source_.Context(), {0, 0}, {0, 0}}, {Grey, Orange}, target_.Context(), messages_));
    EXPECT_EQ(messages_.said, std::vector<std::string>{": In ChangePixels - SelectObject(CopyDC, CopyBitmap) = 0"});
}

TEST_F(ColorMasks, ChangePixelsFailsWithoutAWordWhereTheTargetIsNone) {
    EXPECT_FALSE(ChangePixels(Region(), {Grey, Orange}, nullptr, messages_));
    EXPECT_EQ(messages_.said, std::vector<std::string>{});
}

TEST_F(ColorMasks, BlendTakesTheBackgroundFromItsTopLeftCorner) {
    EXPECT_TRUE(BlendOverColor(Region(), Grey, background_.Context(), target_.Context()));
    ExpectTarget([](int x, int y) { return RGB(x - 2, y - 1, 99); });
}

TEST_F(ColorMasks, BlendFailsWithoutASizeOrATarget) {
    for (const PixelSize size : {TooWide, PixelSize{0, 0}}) {
        EXPECT_FALSE(BlendOverColor({source_.Context(), {0, 0}, size}, Grey, background_.Context(), target_.Context()));
    }
    EXPECT_FALSE(BlendOverColor(Region(), Grey, background_.Context(), nullptr));
}

TEST_F(ColorMasks, MaskHasOnesWhereTheRegionHasTheColor) {
    const MonochromePicture mask({3, 2});
    ASSERT_TRUE(mask);
    EXPECT_TRUE(MakeColorMask(Region(), mask.Context(), Grey));
    for (int y = 0; y < 2; ++y) {
        EXPECT_EQ(GetPixel(mask.Context(), 0, y), RGB(255, 255, 255));
        EXPECT_EQ(GetPixel(mask.Context(), 1, y), RGB(0, 0, 0));
        EXPECT_EQ(GetPixel(mask.Context(), 2, y), RGB(255, 255, 255));
    }
}

TEST_F(ColorMasks, MaskGivesTheSourceItsBackgroundColorBack) {
    const MonochromePicture mask({3, 2});
    SetBkColor(source_.Context(), Orange);
    EXPECT_TRUE(MakeColorMask(Region(), mask.Context(), Grey));
    EXPECT_EQ(GetBkColor(source_.Context()), Orange);
}

TEST_F(ColorMasks, MaskFailsWithoutASizeOrAContext) {
    const MonochromePicture mask({3, 2});
    EXPECT_FALSE(MakeColorMask({source_.Context(), {0, 0}, TooWide}, mask.Context(), Grey));
    EXPECT_FALSE(MakeColorMask(Region(), nullptr, Grey));
}

TEST(MonochromePicture, HasOneBitAPixel) {
    const MonochromePicture picture({5, 3});
    ASSERT_TRUE(picture);
    BITMAP facts{};
    GetObjectA(picture.Bitmap(), sizeof facts, &facts);
    EXPECT_EQ(facts.bmWidth, 5);
    EXPECT_EQ(facts.bmHeight, 3);
    EXPECT_EQ(facts.bmBitsPixel, 1);
    EXPECT_EQ(GetCurrentObject(picture.Context(), OBJ_BITMAP), picture.Bitmap());
}

TEST(MonochromePicture, OneThatCannotBeMadeIsFalse) { EXPECT_FALSE(MonochromePicture(TooWide)); }

} // namespace
