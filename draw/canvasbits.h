// Snapshots of the canvas as byte strings: width, height, and the pixels of 32 bits each, rows from the top down.
#pragma once

#include "base/geometry.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace lumbrix {

inline constexpr std::size_t CanvasBitsHeaderBytes = 8;
inline constexpr std::size_t CanvasBytesPerPixel = 4;

constexpr std::size_t CanvasPixelBytes(PixelSize size) {
    return size.width > 0 && size.height > 0
               ? static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * CanvasBytesPerPixel
               : 0;
}

// The snapshot of these pixels, of which there must be as many as the size says.
inline std::string CanvasBitsOf(PixelSize size, std::span<const std::uint8_t> pixels) {
    std::string bits;
    bits.reserve(CanvasBitsHeaderBytes + pixels.size());
    bits.append(reinterpret_cast<const char*>(&size.width), sizeof size.width);
    bits.append(reinterpret_cast<const char*>(&size.height), sizeof size.height);
    bits.append(reinterpret_cast<const char*>(pixels.data()), pixels.size());
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

} // namespace lumbrix
