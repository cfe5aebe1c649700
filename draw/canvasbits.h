// Snapshots of the canvas as byte strings: width, height, and the pixels of 32 bits each, rows from the top down.
#pragma once

#include "base/geometry.h"

#include <cstddef>
#include <cstring>
#include <string>

namespace lumbrix {

inline constexpr std::size_t CanvasBitsHeaderBytes = 8;
inline constexpr std::size_t CanvasBytesPerPixel = 4;

constexpr std::size_t CanvasPixelBytes(PixelSize size) {
    return size.width > 0 && size.height > 0
               ? static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * CanvasBytesPerPixel
               : 0;
}

// A snapshot whose pixels are all 0, to be filled in.
inline std::string BlankCanvasBits(PixelSize size) {
    std::string bits(CanvasBitsHeaderBytes + CanvasPixelBytes(size), '\0');
    std::memcpy(bits.data(), &size.width, sizeof size.width);
    std::memcpy(bits.data() + sizeof size.width, &size.height, sizeof size.height);
    return bits;
}

// The size that a snapshot states; none where it has not as many pixels as that.
inline PixelSize SizeOfCanvasBits(const std::string& bits) {
    PixelSize size;
    if (bits.size() < CanvasBitsHeaderBytes) {
        return {};
    }
    std::memcpy(&size.width, bits.data(), sizeof size.width);
    std::memcpy(&size.height, bits.data() + sizeof size.width, sizeof size.height);
    return bits.size() == CanvasBitsHeaderBytes + CanvasPixelBytes(size) ? size : PixelSize{};
}

// Where the first pixel is; the snapshot must have a size.
inline char* PixelsOfCanvasBits(std::string& bits) { return bits.data() + CanvasBitsHeaderBytes; }
inline const char* PixelsOfCanvasBits(const std::string& bits) { return bits.data() + CanvasBitsHeaderBytes; }

} // namespace lumbrix
