// Numbers out of bytes in a file's own byte order, and back.
#pragma once

#include <cstdint>

namespace imaginglibrary {

constexpr std::uint16_t LittleEndian16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr std::uint32_t LittleEndian32(const std::uint8_t* bytes) {
    return LittleEndian16(bytes) | static_cast<std::uint32_t>(LittleEndian16(bytes + 2)) << 16;
}

constexpr std::uint16_t BigEndian16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

constexpr std::uint32_t BigEndian32(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(BigEndian16(bytes)) << 16 | BigEndian16(bytes + 2);
}

constexpr void PutLittleEndian16(std::uint8_t* bytes, std::uint16_t value) {
    bytes[0] = static_cast<std::uint8_t>(value);
    bytes[1] = static_cast<std::uint8_t>(value >> 8);
}

constexpr void PutLittleEndian32(std::uint8_t* bytes, std::uint32_t value) {
    PutLittleEndian16(bytes, static_cast<std::uint16_t>(value));
    PutLittleEndian16(bytes + 2, static_cast<std::uint16_t>(value >> 16));
}

} // namespace imaginglibrary
