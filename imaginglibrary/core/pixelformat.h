// Pixel formats and palettes under the platform's own codes, and how many bytes a row of them takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaginglibrary {

// Memory layout: channels lie blue, green, red, alpha in ascending address; indexed rows pack the leftmost pixel into
// the most significant bits; 16-bit channels and 16-bit pixels are in the machine's byte order. Rgb48 holds the file's
// own (not linearised) values, 0 to 65535.
enum class PixelFormat : std::uint32_t {
    Undefined = 0,
    Indexed1 = 0x00030101,
    Indexed4 = 0x00030402,
    Indexed8 = 0x00030803,
    Rgb555 = 0x00021005,
    Rgb565 = 0x00021006,
    Argb1555 = 0x00061007,
    Rgb24 = 0x00021808,
    Rgb32 = 0x00022009,
    Argb32 = 0x0026200A,
    Pargb32 = 0x000E200B,
    Rgb48 = 0x0010300C,
};

// Colours as 0xAARRGGBB, not premultiplied.
using Color = std::uint32_t;

// Empty for formats that are not indexed. Never longer than 2 to the power of the bits per pixel; an index beyond its
// end counts as opaque black.
using Palette = std::vector<Color>;

constexpr unsigned BitsPerPixel(PixelFormat format) { return (static_cast<std::uint32_t>(format) >> 8) & 0xFF; }

constexpr bool IsIndexed(PixelFormat format) { return (static_cast<std::uint32_t>(format) & 0x00010000) != 0; }

// Whether pixels of the format carry alpha themselves. (An indexed picture may carry it in its palette.)
constexpr bool HasAlpha(PixelFormat format) { return (static_cast<std::uint32_t>(format) & 0x00040000) != 0; }

// Bytes that one row takes, without padding.
constexpr std::size_t BytesPerRow(PixelFormat format, std::uint32_t width) {
    return (static_cast<std::size_t>(width) * BitsPerPixel(format) + 7) / 8;
}

constexpr Color MakeColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha = 255) {
    return (Color{alpha} << 24) | (Color{red} << 16) | (Color{green} << 8) | blue;
}

constexpr std::uint8_t AlphaOf(Color color) { return static_cast<std::uint8_t>(color >> 24); }
constexpr std::uint8_t RedOf(Color color) { return static_cast<std::uint8_t>(color >> 16); }
constexpr std::uint8_t GreenOf(Color color) { return static_cast<std::uint8_t>(color >> 8); }
constexpr std::uint8_t BlueOf(Color color) { return static_cast<std::uint8_t>(color); }

// A grey ramp from opaque black to opaque white with `count` entries (2, 4, 16 or 256).
Palette GreyPalette(unsigned count);

// Whether any entry is not fully opaque.
bool HasTransparency(const Palette& palette);

} // namespace imaginglibrary
