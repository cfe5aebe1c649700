// Laying pixels over bitmaps of every format that can be drawn on.
#include "imaginglibrary/operations/blend.h"

#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::shared_ptr<Bitmap> NewBitmap(PixelFormat format, std::uint32_t width = 3, std::uint32_t height = 2) {
    return *Bitmap::Create({.width = width, .height = height, .format = format});
}

void Blend(Bitmap& bitmap, Color color, std::int64_t x = 0, std::int64_t y = 0) {
    Canvas canvas{bitmap};
    const std::uint8_t pixel[] = {BlueOf(color), GreenOf(color), RedOf(color), AlphaOf(color)};
    BlendRow(canvas, x, y, pixel, 1);
}

TEST(Blend, HalfRedOverBlackIsHalfRed) {
    const auto bitmap = NewBitmap(PixelFormat::Rgb24);
    Blend(*bitmap, 0x80FF0000);
    EXPECT_EQ(ColorsOf(*bitmap)[0], 0xFF800000u);
}

TEST(Blend, EveryAlphaOverEveryGreyIsRoundedOnce) {
    for (unsigned below = 0; below < 256; below += 15) {
        for (unsigned alpha = 0; alpha < 256; ++alpha) {
            const auto bitmap = NewBitmap(PixelFormat::Rgb24);
            const auto grey = static_cast<std::uint8_t>(below);
            Blend(*bitmap, MakeColor(grey, grey, grey));
            Blend(*bitmap, MakeColor(200, 100, 0, static_cast<std::uint8_t>(alpha)));
            const double expected = (200.0 * alpha + below * (255.0 - alpha)) / 255;
            ASSERT_NEAR(RedOf(ColorsOf(*bitmap)[0]), expected, 0.5001) << below << " " << alpha;
        }
    }
}

TEST(Blend, AlphaBelowGrowsByTheUnion) {
    const auto bitmap = NewBitmap(PixelFormat::Argb32);
    Blend(*bitmap, 0x800000FF);
    Blend(*bitmap, 0x80FF0000);
    // 128 over 128: alpha 192 of 255, red for 128 of them, blue for the rest.
    EXPECT_EQ(ColorsOf(*bitmap)[0], 0xC0AA0055u);
}

TEST(Blend, ClearTargetTakesThePixelAsItIs) {
    const auto bitmap = NewBitmap(PixelFormat::Argb32);
    Blend(*bitmap, 0x01FE0203);
    EXPECT_EQ(ColorsOf(*bitmap)[0], 0x01FE0203u);
}

TEST(Blend, PremultipliedTargetHoldsColorsTimesAlpha) {
    const auto bitmap = NewBitmap(PixelFormat::Pargb32);
    Blend(*bitmap, 0x80FF0000);
    EXPECT_EQ(bitmap->Row(0)[2], 0x80);
    EXPECT_EQ(bitmap->Row(0)[3], 0x80);
}

TEST(Blend, OpaquePixelReplacesInEveryFormat) {
    for (const PixelFormat format : {PixelFormat::Rgb555, PixelFormat::Rgb565, PixelFormat::Rgb24, PixelFormat::Rgb32,
                                     PixelFormat::Argb32, PixelFormat::Pargb32, PixelFormat::Rgb48}) {
        const auto bitmap = NewBitmap(format);
        Blend(*bitmap, 0xFFFF00FF, 1, 1);
        const auto colors = ColorsOf(*bitmap);
        EXPECT_EQ(colors[4], 0xFFFF00FFu) << static_cast<unsigned>(format);
        EXPECT_EQ(colors[3] & 0xFFFFFF, 0u);
        EXPECT_EQ(colors[5] & 0xFFFFFF, 0u);
    }
}

TEST(Blend, NarrowChannelsStayWhenNothingIsLaidOverThem) {
    for (const PixelFormat format : {PixelFormat::Rgb555, PixelFormat::Rgb565, PixelFormat::Rgb48}) {
        const auto bitmap = MakePicture(format, 16, 4);
        const auto before = ColorsOf(*bitmap);
        for (std::int64_t x = 0; x < 16; ++x) {
            Blend(*bitmap, 0x00FFFFFF, x, 1);
        }
        EXPECT_EQ(ColorsOf(*bitmap), before);
    }
}

TEST(Blend, SixteenBitChannelsAreBlendedInFull) {
    const auto bitmap = NewBitmap(PixelFormat::Rgb48);
    Blend(*bitmap, 0x01FFFFFF);
    std::uint16_t blue;
    std::memcpy(&blue, bitmap->Row(0), sizeof blue);
    EXPECT_EQ(blue, 257);
}

TEST(Blend, CanvasMayLieAnywhereOnItsSurface) {
    const auto bitmap = NewBitmap(PixelFormat::Rgb24);
    Canvas canvas{*bitmap, 100, -50};
    const std::uint8_t pixel[] = {1, 2, 3, 255};
    BlendRow(canvas, 101, -49, pixel, 1);
    EXPECT_EQ(ColorsOf(*bitmap)[4], 0xFF030201u);
}

TEST(Drawable, IndexedAndOneBitAlphaAreNot) {
    for (const PixelFormat format :
         {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8, PixelFormat::Argb1555}) {
        EXPECT_FALSE(IsDrawable(format));
    }
    EXPECT_TRUE(IsDrawable(PixelFormat::Rgb24));
}

TEST(Blend, PremultipliedPixelsAreAddedToWhatTheyLetThrough) {
    // Half of a full red, and a blue that exceeds its alpha.
    const std::uint8_t pixels[] = {0, 0, 128, 128, 200, 0, 0, 100, 9, 9, 9, 0};
    for (const PixelFormat format : {PixelFormat::Rgb24, PixelFormat::Rgb32, PixelFormat::Rgb48}) {
        const auto bitmap = NewBitmap(format);
        Canvas canvas{*bitmap};
        for (std::int64_t x = 0; x < 3; ++x) {
            Blend(*bitmap, White, x, 1);
        }
        BlendPremultipliedRow(canvas, 0, 1, pixels, 3);
        const auto colors = ColorsOf(*bitmap);
        EXPECT_EQ(colors[3], MakeColor(255, 127, 127));
        EXPECT_EQ(colors[4], MakeColor(155, 155, 255));
        EXPECT_EQ(colors[5], White);
        EXPECT_EQ(colors[0], Black);
    }
}

TEST(Blend, PremultipliedPixelsOverAlphaGrowByTheUnion) {
    const std::uint8_t pixels[] = {0, 0, 128, 128};
    const auto straight = NewBitmap(PixelFormat::Argb32);
    Canvas canvas{*straight};
    BlendPremultipliedRow(canvas, 0, 0, pixels, 1);
    EXPECT_EQ(ColorsOf(*straight)[0], MakeColor(255, 0, 0, 128));
    const auto premultiplied = NewBitmap(PixelFormat::Pargb32);
    Canvas other{*premultiplied};
    BlendPremultipliedRow(other, 0, 0, pixels, 1);
    BlendPremultipliedRow(other, 0, 0, pixels, 1);
    const std::uint8_t expected[] = {0, 0, 192, 192};
    EXPECT_TRUE(std::equal(expected, expected + 4, premultiplied->Row(0)));
}

TEST(Blend, RowsMayLieInAnyOrder) {
    std::uint8_t pixels[4 * 2 * 3] = {};
    const Canvas fromBottom(PixelFormat::Rgb32, pixels + 16, -8, {10, 20, 12, 23});
    const std::uint8_t pixel[] = {1, 2, 3, 255};
    BlendRow(fromBottom, 11, 20, pixel, 1);
    BlendRow(fromBottom, 10, 22, pixel, 1);
    EXPECT_EQ(pixels[20], 1);
    EXPECT_EQ(pixels[0], 1);
    EXPECT_EQ(std::count(std::begin(pixels), std::end(pixels), 1), 2);
}

} // namespace
