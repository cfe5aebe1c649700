// Pixels of 1, 2, 4 or 8 bits in packed rows, the leftmost in the most significant bits.
#pragma once

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// How far the pixel at position x lies from its byte's least significant bit.
constexpr unsigned PackedShift(std::size_t x, unsigned bits) { return 8 - bits - static_cast<unsigned>(x * bits % 8); }

constexpr std::uint8_t PackedAt(const std::uint8_t* row, std::size_t x, unsigned bits) {
    return static_cast<std::uint8_t>((row[x * bits / 8] >> PackedShift(x, bits)) & ((1u << bits) - 1));
}

// `value` fits into the bits; the other pixels of the byte stay as they are.
constexpr void PutPacked(std::uint8_t* row, std::size_t x, unsigned bits, unsigned value) {
    std::uint8_t& byte = row[x * bits / 8];
    const unsigned shift = PackedShift(x, bits);
    const unsigned mask = ((1u << bits) - 1) << shift;
    byte = static_cast<std::uint8_t>((byte & ~mask) | value << shift);
}

// Spreads `count` pixels from position `first` on to a byte each, and packs them again. Bits behind the last pixel
// become 0.
void UnpackPixels(const std::uint8_t* row, std::size_t first, unsigned bits, std::uint8_t* values, std::size_t count);
void PackPixels(const std::uint8_t* values, unsigned bits, std::uint8_t* row, std::size_t count);

} // namespace imaginglibrary
