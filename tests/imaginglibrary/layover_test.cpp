// Pictures laid over a colour.
#include "imaginglibrary/operations/layover.h"

#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace imaginglibrary;
using namespace tests;

// A picture of one row with these pixels as they are stored, blue, green, red and alpha.
std::shared_ptr<Bitmap> RowOf(PixelFormat format, const std::vector<std::uint8_t>& bytes) {
    const auto width = static_cast<std::uint32_t>(bytes.size() * 8 / BitsPerPixel(format));
    auto made = Bitmap::Create({.width = width, .height = 1, .format = format, .palette = {}, .resolution = {}});
    std::memcpy((*made)->Row(0), bytes.data(), bytes.size());
    return *made;
}

constexpr Color Below = MakeColor(0x40, 0x80, 0xC8);

TEST(LayOver, EveryChannelIsBlendedByItsAlphaAndRoundedOnce) {
    const auto picture = RowOf(PixelFormat::Argb32, {
                                                        10, 20, 30, 255, // opaque: stays
                                                        10, 20, 30, 0,   // nothing: the colour
                                                        10, 20, 30, 128, // (10 * 128 + 200 * 127) / 255 = 104.63
                                                        255, 0, 255, 1,  // 200.22, 127.498, 64.75
                                                    });
    const auto opaque = LaidOver(picture, Below);
    EXPECT_EQ(opaque->Info().format, PixelFormat::Rgb24);
    EXPECT_EQ(ColorsOf(*opaque), (std::vector{MakeColor(30, 20, 10), MakeColor(0x40, 0x80, 0xC8),
                                              MakeColor(47, 74, 105), MakeColor(65, 127, 200)}));
}

TEST(LayOver, PremultipliedColorsAreAddedAsTheyAre) {
    const auto picture = RowOf(PixelFormat::Pargb32, {
                                                         5,
                                                         10,
                                                         15,
                                                         128, // 5 + 200 * 127 / 255 = 5 + 99.6
                                                         9,
                                                         9,
                                                         9,
                                                         0, // above its alpha: none
                                                         1,
                                                         2,
                                                         3,
                                                         255,
                                                     });
    EXPECT_EQ(ColorsOf(*LaidOver(picture, Below)),
              (std::vector{MakeColor(15 + 32, 10 + 64, 5 + 100), MakeColor(0x40, 0x80, 0xC8), MakeColor(3, 2, 1)}));
}

TEST(LayOver, BitOfAlphaIsAllOrNothing) {
    const auto picture = RowOf(PixelFormat::Argb1555, {0x1F, 0x80, 0x1F, 0x00});
    EXPECT_EQ(ColorsOf(*LaidOver(picture, Below)), (std::vector{MakeColor(0, 0, 255), Below}));
}

TEST(LayOver, PaletteStaysOneOfBlendedColors) {
    auto made = Bitmap::Create({.width = 3,
                                .height = 1,
                                .format = PixelFormat::Indexed8,
                                .palette = {MakeColor(30, 20, 10), MakeColor(1, 2, 3, 0), MakeColor(30, 20, 10, 128)},
                                .resolution = {}});
    const std::uint8_t row[] = {0, 1, 2};
    std::memcpy((*made)->Row(0), row, sizeof row);
    const auto opaque = LaidOver(*made, Below);
    EXPECT_EQ(opaque->Info().format, PixelFormat::Indexed8);
    EXPECT_FALSE(MayBeTransparent(opaque->Info()));
    EXPECT_EQ(ColorsOf(*opaque), (std::vector{MakeColor(30, 20, 10), Below, MakeColor(47, 74, 105)}));
}

TEST(LayOver, WhatCannotBeTranslucentIsGivenBackAsItIs) {
    for (const PixelFormat format : {PixelFormat::Rgb24, PixelFormat::Rgb32, PixelFormat::Rgb48, PixelFormat::Rgb565}) {
        const std::shared_ptr<const PixelSource> picture = MakePicture(format, 5, 4);
        EXPECT_EQ(LaidOver(picture, Below), picture);
    }
    auto grey = Bitmap::Create(
        {.width = 3, .height = 1, .format = PixelFormat::Indexed8, .palette = GreyPalette(256), .resolution = {}});
    EXPECT_EQ(LaidOver(*grey, Below), *grey);
}

TEST(LayOver, AlphaOfTheColorDoesNotCount) {
    const auto picture = MakePicture(PixelFormat::Argb32, 9, 7);
    EXPECT_EQ(ColorsOf(*LaidOver(picture, 0x00FFFFFF)), ColorsOverWhite(*picture));
}

TEST(LayOver, ResolutionSizeAndEveryRowStay) {
    auto made = Bitmap::Create(
        {.width = 4, .height = 9, .format = PixelFormat::Argb32, .palette = {}, .resolution = {300, 150}});
    const auto opaque = LaidOver(*made, Below);
    EXPECT_EQ(opaque->Info().width, 4u);
    EXPECT_EQ(opaque->Info().height, 9u);
    EXPECT_EQ(opaque->Info().resolution.horizontal, 300);
    EXPECT_EQ(opaque->Info().resolution.vertical, 150);
    ExpectIndependentReaders(*LaidOver(MakePicture(PixelFormat::Argb32, 13, 30), Below));
}

TEST(LayOver, RowsComeFromTheBottomWhereThePicturesDo) {
    const auto picture = MakePicture(PixelFormat::Argb32, 6, 5);
    ASSERT_TRUE(picture->HasRowsFromBottom());
    const auto opaque = LaidOver(picture, Below);
    ASSERT_TRUE(opaque->HasRowsFromBottom());
    const auto colors = ColorsOf(*opaque);
    auto rows = opaque->OpenRowsFromBottom();
    ASSERT_TRUE(rows.Ok());
    for (std::size_t y = 5; y-- > 0;) {
        std::uint8_t row[6 * 3];
        ASSERT_EQ((*rows)->ReadRow(row), Status::Ok);
        for (std::size_t x = 0; x < 6; ++x) {
            EXPECT_EQ(MakeColor(row[3 * x + 2], row[3 * x + 1], row[3 * x]), colors[y * 6 + x]);
        }
    }
}

} // namespace
