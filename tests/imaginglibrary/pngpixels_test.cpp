// What single samples of PNG files become, where pictures of all kinds do not tell.
#include "imaginglibrary/codecs/png/pngpixels.h"

#include "imaginglibrary/codecs/png/pngpalette.h"

#include <gtest/gtest.h>

#include <png.h>

namespace {

using namespace imaginglibrary;

using PixelBytes = std::vector<std::uint8_t>;

PixelBytes Converted(const PngLayout& layout, const PixelBytes& from) {
    const PngPixels pixels(layout);
    EXPECT_EQ(pixels.RowForm().rowBytes, from.size());
    constexpr std::uint8_t Untouched = 0x55;
    const std::size_t bytes = BytesPerRow(layout.format, layout.width);
    PixelBytes to(bytes + 8, Untouched);
    PixelBytes readable = from;
    readable.resize(from.size() + 8);
    pixels.Convert(readable.data(), to.data());
    EXPECT_EQ(PixelBytes(to.begin() + static_cast<std::ptrdiff_t>(bytes), to.end()), PixelBytes(8, Untouched));
    to.resize(bytes);
    return to;
}

TEST(PngPixelsOf, SixteenBitsAreRounded) {
    for (unsigned value = 0; value <= 65535; ++value) {
        const auto high = static_cast<std::uint8_t>(value >> 8), low = static_cast<std::uint8_t>(value);
        const auto rounded = static_cast<std::uint8_t>((value + 128) / 257);
        ASSERT_EQ(Converted({.width = 1, .colorType = PNG_COLOR_TYPE_GRAY, .depth = 16, .format = PixelFormat::Argb32},
                            {high, low}),
                  (PixelBytes{rounded, rounded, rounded, 255}))
            << value;
    }
}

TEST(PngPixelsOf, BitsBehindTheLastPixelBecomeZero) {
    PngLayout layout{.width = 11, .colorType = PNG_COLOR_TYPE_GRAY, .depth = 1, .format = PixelFormat::Indexed1};
    EXPECT_EQ(Converted(layout, {0xFF, 0xFF}), (PixelBytes{0xFF, 0xE0}));
    layout.width = 16;
    EXPECT_EQ(Converted(layout, {0xFF, 0xFF}), (PixelBytes{0xFF, 0xFF}));
    layout = {.width = 3, .colorType = PNG_COLOR_TYPE_PALETTE, .depth = 4, .format = PixelFormat::Indexed4};
    EXPECT_EQ(Converted(layout, {0xAB, 0xCD}), (PixelBytes{0xAB, 0xC0}));
}

TEST(PngPixelsOf, PaletteCorrectsThePixelsOfTheRowAlone) {
    const PngPalette palette({.width = 3, .height = 1, .format = PixelFormat::Indexed8, .palette = {0xFF010203}});
    EXPECT_EQ(palette.Entries(), (Palette{0xFF010203, 0xFF000000}));
    std::uint8_t row[] = {0, 2, 255, 255};
    palette.Correct(row);
    EXPECT_EQ(PixelBytes(row, row + 4), (PixelBytes{0, 1, 1, 255}));
}

TEST(PngPixelsOf, IndexBeyondThePaletteIsOpaqueBlack) {
    const PngLayout layout{.width = 3,
                           .colorType = PNG_COLOR_TYPE_PALETTE,
                           .depth = 8,
                           .palette = {MakeColor(1, 2, 3, 4), MakeColor(5, 6, 7, 8)},
                           .format = PixelFormat::Argb32};
    EXPECT_EQ(Converted(layout, {1, 2, 255}), (PixelBytes{7, 6, 5, 8, 0, 0, 0, 255, 0, 0, 0, 255}));
}

// A chunk may tell more bits than the samples have; only those count.
TEST(PngPixelsOf, ClearColorIsComparedInTheBitsOfTheSamples) {
    PngLayout layout{.width = 2,
                     .colorType = PNG_COLOR_TYPE_RGB,
                     .depth = 8,
                     .clear = {{0x1101, 0x2202, 0x3303}},
                     .format = PixelFormat::Argb32};
    EXPECT_EQ(Converted(layout, {1, 2, 3, 1, 2, 4}), (PixelBytes{3, 2, 1, 0, 4, 2, 1, 255}));
    layout = {.width = 2,
              .colorType = PNG_COLOR_TYPE_GRAY,
              .depth = 4,
              .clear = {{0x23, 0, 0}},
              .format = PixelFormat::Argb32};
    EXPECT_EQ(Converted(layout, {0x34}), (PixelBytes{51, 51, 51, 0, 68, 68, 68, 255}));
    layout.depth = 16;
    EXPECT_EQ(Converted(layout, {0, 0x23, 1, 0x23}), (PixelBytes{0, 0, 0, 0, 1, 1, 1, 255}));
}

TEST(PngPixelsOf, FilesHavePixelsOfWholeBytes) {
    const auto pixelBytesOf = [](int colorType, int depth) {
        return PngPixels({.width = 1, .colorType = colorType, .depth = depth, .format = PixelFormat::Argb32})
            .RowForm()
            .pixelBytes;
    };
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_GRAY, 1), 1u);
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_PALETTE, 4), 1u);
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_GRAY_ALPHA, 8), 2u);
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_RGB, 8), 3u);
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_RGB, 16), 6u);
    EXPECT_EQ(pixelBytesOf(PNG_COLOR_TYPE_RGB_ALPHA, 16), 8u);
}

} // namespace
