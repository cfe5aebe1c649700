// The bytes of an icon file: one picture of 32 by 32 pixels with 24 bits each, and its mask.
#pragma once

#include "toolkit/layout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace lumbrix {

inline constexpr std::int32_t IconSide = 32;
inline constexpr int IconBits = 24; // a pixel

// Where a picture has exactly this colour, its icon is transparent.
inline constexpr WindowColor IconKeyColor = ColorOf(197, 197, 197);

// Pixels with blue first, and one bit a pixel with the high one leftmost, 1 for a transparent pixel. Rows bottom up.
using IconImage = std::array<std::uint8_t, std::size_t{IconSide} * IconSide * 3>;
using IconMask = std::array<std::uint8_t, std::size_t{IconSide} * IconSide / 8>;

// The directory of the file and its one entry, in the order of the file.
struct IconHead {
    std::uint16_t reserved = 0;
    std::uint16_t type = 1;
    std::uint16_t count = 1;
    std::uint8_t width = IconSide;
    std::uint8_t height = IconSide;
    std::uint8_t colorCount = 0;
    std::uint8_t entryReserved = 0;
    std::uint16_t planes = 0;
    std::uint16_t bitCount = 0;
    std::uint32_t bytesInResource = 744; // of an icon with 16 colours
    std::uint32_t imageOffset = 22;
};

// The head for a depth in bits a pixel. The bytes in the resource are those of 16 colours for every depth.
IconHead IconHeadFor(int bitCount);

// How many bytes of colour table a picture of that depth has.
std::size_t ColorTableBytes(int bitCount);

// The whole file. The bytes in the resource that it states are its own, not those of the head.
std::string IconFile(IconHead head, const IconImage& image, const IconMask& mask);

} // namespace lumbrix
