// BMP files put together from their fields, however odd these are.
#pragma once

#include "imaginglibrary/core/bytes.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace tests {

inline std::string Number16(unsigned value) {
    std::array<std::uint8_t, 2> bytes;
    imaginglibrary::PutLittleEndian16(bytes.data(), static_cast<std::uint16_t>(value));
    return {bytes.begin(), bytes.end()};
}

inline std::string Number32(std::uint32_t value) {
    std::array<std::uint8_t, 4> bytes;
    imaginglibrary::PutLittleEndian32(bytes.data(), value);
    return {bytes.begin(), bytes.end()};
}

inline std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

// A BMP file put together from its fields.
struct BmpFile {
    std::uint32_t headerBytes = 40;
    std::int32_t width = 2;
    std::int32_t height = 2;
    unsigned bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t dotsPerMetre = 0;
    std::uint32_t colorsUsed = 0;
    std::string behindHeader; // masks of the 40-byte header, palette
    std::string masks;        // masks inside a longer header
    std::string pixels;
    bool namesPixelOffset = true;

    std::string Whole() const {
        std::string header = Number32(headerBytes);
        if (headerBytes == 12) {
            header += Number16(static_cast<unsigned>(width)) + Number16(static_cast<unsigned>(height)) + Number16(1) +
                      Number16(bits);
        } else {
            header += Number32(static_cast<std::uint32_t>(width)) + Number32(static_cast<std::uint32_t>(height)) +
                      Number16(1) + Number16(bits) + Number32(compression) + Number32(0) + Number32(dotsPerMetre) +
                      Number32(dotsPerMetre) + Number32(colorsUsed) + Number32(0) + masks;
            header.resize(headerBytes);
        }
        const std::size_t offset = 14 + header.size() + behindHeader.size();
        return "BM" + Number32(static_cast<std::uint32_t>(offset + pixels.size())) + Number32(0) +
               Number32(namesPixelOffset ? static_cast<std::uint32_t>(offset) : 0) + header + behindHeader + pixels;
    }
};

// Black, white, red and blue.
inline const std::string FourColors = Bytes({0, 0, 0, 0, 255, 255, 255, 0, 0, 0, 255, 0, 255, 0, 0, 0});

inline BmpFile RleFile(unsigned bits, std::int32_t width, std::int32_t height, std::string pixels) {
    return {.width = width,
            .height = height,
            .bits = bits,
            .compression = bits == 8 ? 1u : 2u,
            .colorsUsed = 4,
            .behindHeader = FourColors,
            .pixels = std::move(pixels)};
}

} // namespace tests
