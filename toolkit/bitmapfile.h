// What stands in a BMP file of 24 bits a pixel before its pixels.
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace lumbrix {

inline constexpr std::size_t BitmapFileHeaderBytes = 54;

// Whether the header says how many bytes the pixels take, or leaves that 0, as it may.
enum class PixelBytes {
    Stated,
    Omitted,
};

// Rows of 24-bit pixels take a multiple of four bytes.
constexpr std::uint32_t BitmapRowBytes(std::int32_t width) {
    return (static_cast<std::uint32_t>(width) * 3 + 3) / 4 * 4;
}

// The header of a picture whose rows stand bottom up behind it.
constexpr std::array<std::uint8_t, BitmapFileHeaderBytes> BitmapFileHeader(PixelSize size, PixelBytes pixelBytes) {
    constexpr std::uint32_t InfoBytes = 40;
    constexpr std::uint32_t Planes = 1;
    constexpr std::uint32_t BitsPerPixel = 24;
    std::array<std::uint8_t, BitmapFileHeaderBytes> header{'B', 'M'};
    const auto put = [&](std::size_t offset, std::uint32_t number) {
        for (std::size_t i = 0; i < sizeof number; ++i) {
            header[offset + i] = static_cast<std::uint8_t>(number >> (8 * i));
        }
    };
    const std::uint32_t bytes = BitmapRowBytes(size.width) * static_cast<std::uint32_t>(size.height);
    put(2, BitmapFileHeaderBytes + bytes);
    put(10, BitmapFileHeaderBytes);
    put(14, InfoBytes);
    put(18, static_cast<std::uint32_t>(size.width));
    put(22, static_cast<std::uint32_t>(size.height));
    put(26, Planes | BitsPerPixel << 16);
    put(34, pixelBytes == PixelBytes::Stated ? bytes : 0);
    return header;
}

// The whole file; `rows` are those of the picture, bottom up, each a multiple of four bytes.
inline std::string BitmapFile(PixelSize size, std::span<const std::uint8_t> rows, PixelBytes pixelBytes) {
    const auto header = BitmapFileHeader(size, pixelBytes);
    std::string file;
    file.reserve(header.size() + rows.size());
    file.append(header.begin(), header.end());
    file.append(rows.begin(), rows.end());
    return file;
}

} // namespace lumbrix
