// The blocks that a GIF file consists of behind its screen: giflib would take its time over each, and there may be a
// hundred million of them.
#pragma once

#include "imaginglibrary/files/inputfile.h"

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

inline constexpr int GifImageMark = ',';
inline constexpr int GifExtensionMark = '!';

inline constexpr std::size_t GifMostBlockBytes = 255;
inline constexpr std::size_t GifDescriptorBytes = 9; // of an image

// The entries of a palette that the flags of a screen or an image tell of; 0 where there is none.
constexpr std::size_t GifPaletteEntries(std::uint8_t flags) {
    constexpr unsigned HasPalette = 0x80;
    return (flags & HasPalette) != 0 ? std::size_t{2} << (flags & 7) : 0;
}

// From the length of a block to behind the empty one that is the last. False where the file ends before.
bool PassOverGifBlocks(ByteReader& reader);

} // namespace imaginglibrary
