// Rows of every pixel format turned into true colour.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

// One pixel of a format, converted to Argb32 and given back as a colour.
template <std::size_t Size>
Color Converted(PixelFormat format, std::array<std::uint8_t, Size> pixel, Palette palette = {}) {
    const RowConverter converter({.width = 1, .height = 1, .format = format, .palette = std::move(palette)},
                                 PixelFormat::Argb32);
    Color color = 0;
    converter.Convert(pixel.data(), reinterpret_cast<std::uint8_t*>(&color));
    return color;
}

TEST(RowConverter, IndexesGoThroughThePalette) {
    EXPECT_EQ(Converted<1>(PixelFormat::Indexed8, {2}, {1, 2, 0x12345678}), 0x12345678u);
    EXPECT_EQ(Converted<1>(PixelFormat::Indexed4, {0x2F}, {1, 2, 0x12345678}), 0x12345678u);
    EXPECT_EQ(Converted<1>(PixelFormat::Indexed1, {0x80}, {1, 0x12345678}), 0x12345678u);
}

TEST(RowConverter, IndexBeyondThePaletteIsOpaqueBlack) {
    EXPECT_EQ(Converted<1>(PixelFormat::Indexed8, {200}, {1, 2}), 0xFF000000u);
}

TEST(RowConverter, SixteenBitChannelsFillTheWholeRange) {
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb555, {0xFF, 0x7F}), 0xFFFFFFFFu);
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb565, {0xFF, 0xFF}), 0xFFFFFFFFu);
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb565, {0x00, 0x00}), 0xFF000000u);
    EXPECT_EQ(Converted<2>(PixelFormat::Argb1555, {0xFF, 0x7F}), 0x00FFFFFFu);
    EXPECT_EQ(Converted<2>(PixelFormat::Argb1555, {0x00, 0x80}), 0xFF000000u);
}

TEST(RowConverter, DeepChannelsAreRounded) {
    EXPECT_EQ(Converted<6>(PixelFormat::Rgb48, {0xFF, 0xFF, 0x80, 0x80, 0x00, 0x01}), 0xFF0180FFu);
}

TEST(RowConverter, PremultipliedPixelsAreDividedByTheirAlpha) {
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {0, 64, 128, 128}), 0x80FF8000u);
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {9, 9, 9, 0}), 0x00000000u);
}

TEST(RowConverter, TargetWithoutAlphaShowsThePictureOverWhite) {
    const auto halfBlack = MakePictureOf(1, 1, [](auto, auto) { return MakeColor(0, 0, 0, 128); });
    const auto hole = MakePictureOf(1, 1, [](auto, auto) { return MakeColor(0, 0, 0, 0); });
    EXPECT_EQ(ColorsOverWhite(*halfBlack).front(), MakeColor(127, 127, 127));
    EXPECT_EQ(ColorsOverWhite(*hole).front(), MakeColor(255, 255, 255));
}

TEST(RowConverter, ConvertedPictureKeepsSizeAndResolution) {
    std::shared_ptr<const PixelSource> picture = *Bitmap::Create(
        {.width = 3, .height = 2, .format = PixelFormat::Indexed8, .palette = {0xFF112233}, .resolution = {72, 73}});
    const auto converted = ConvertedTo(picture, PixelFormat::Rgb24);
    EXPECT_EQ(converted->Info().format, PixelFormat::Rgb24);
    EXPECT_TRUE(converted->Info().palette.empty());
    EXPECT_EQ(converted->Info().resolution.vertical, 73);
    EXPECT_EQ(ColorsOf(*converted), ColorsOf(*picture));
}

} // namespace
