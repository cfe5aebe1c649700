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

TEST(RowConverter, NarrowChannelsRepeatTheirUpperBits) {
    // Of 31, the levels 1, 4 and 16, then 3, 15 and 30; of 63, the levels 16, 31 and 1.
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb555, {0x90, 0x04}), MakeColor(8, 33, 132));
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb555, {0xFE, 0x0D}), MakeColor(24, 123, 247));
    EXPECT_EQ(Converted<2>(PixelFormat::Argb1555, {0x90, 0x84}), MakeColor(8, 33, 132));
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb565, {0x1E, 0x1A}), MakeColor(24, 65, 247));
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb565, {0xE1, 0x83}), MakeColor(132, 125, 8));
    EXPECT_EQ(Converted<2>(PixelFormat::Rgb565, {0x20, 0x00}), MakeColor(0, 4, 0));
}

TEST(RowConverter, DeepChannelsAreRounded) {
    EXPECT_EQ(Converted<6>(PixelFormat::Rgb48, {0xFF, 0xFF, 0x80, 0x80, 0x00, 0x01}), 0xFF0180FFu);
    // 128 is just below half a level, 129 above it; so are 65406 and 65407 of the last one.
    EXPECT_EQ(Converted<6>(PixelFormat::Rgb48, {128, 0, 129, 0, 0x7E, 0xFF}), MakeColor(254, 1, 0));
    EXPECT_EQ(Converted<6>(PixelFormat::Rgb48, {0x7F, 0xFF, 0, 0, 0, 0}), MakeColor(0, 0, 255));
}

TEST(RowConverter, OpaquePixelsGetTheirFourthByte) {
    const std::uint8_t narrow[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const std::uint8_t wide[] = {1, 2, 3, 0, 4, 5, 6, 77, 7, 8, 9, 255};
    for (const PixelFormat to : {PixelFormat::Rgb32, PixelFormat::Argb32, PixelFormat::Pargb32}) {
        Color fromNarrow[3], fromWide[3];
        RowConverter({.width = 3, .height = 1, .format = PixelFormat::Rgb24}, to)
            .Convert(narrow, reinterpret_cast<std::uint8_t*>(fromNarrow));
        RowConverter({.width = 3, .height = 1, .format = PixelFormat::Rgb32}, to)
            .Convert(wide, reinterpret_cast<std::uint8_t*>(fromWide));
        for (const Color* colors : {fromNarrow, fromWide}) {
            EXPECT_EQ(colors[0], MakeColor(3, 2, 1));
            EXPECT_EQ(colors[1], MakeColor(6, 5, 4));
            EXPECT_EQ(colors[2], MakeColor(9, 8, 7));
        }
    }
}

// The blue, green and red of one pixel of Argb32 in another format.
std::array<std::uint8_t, 4> FromArgb(Color color, PixelFormat to) {
    std::array<std::uint8_t, 4> pixel{};
    RowConverter({.width = 1, .height = 1, .format = PixelFormat::Argb32}, to)
        .Convert(reinterpret_cast<const std::uint8_t*>(&color), pixel.data());
    return pixel;
}

TEST(RowConverter, ChannelsTimesTheirAlphaAreRounded) {
    using Bytes = std::array<std::uint8_t, 4>;
    EXPECT_EQ(FromArgb(MakeColor(127, 128, 255, 1), PixelFormat::Pargb32), (Bytes{1, 1, 0, 1}));
    EXPECT_EQ(FromArgb(MakeColor(1, 100, 200, 128), PixelFormat::Pargb32), (Bytes{100, 50, 1, 128}));
    EXPECT_EQ(FromArgb(MakeColor(254, 0, 127, 127), PixelFormat::Rgb24), (Bytes{191, 128, 255, 0}));
    EXPECT_EQ(FromArgb(MakeColor(254, 0, 127, 128), PixelFormat::Rgb32), (Bytes{191, 127, 254, 255}));
}

TEST(RowConverter, PremultipliedPixelsAreDividedByTheirAlpha) {
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {0, 64, 128, 128}), 0x80FF8000u);
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {9, 9, 9, 0}), 0x00000000u);
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {1, 2, 7, 7}), MakeColor(255, 73, 36, 7));
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {1, 2, 3, 2}), MakeColor(255, 255, 128, 2)) << "none is above 255";
    EXPECT_EQ(Converted<4>(PixelFormat::Pargb32, {201, 0, 0, 200}), MakeColor(0, 0, 255, 200)) << "256 neither";
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
