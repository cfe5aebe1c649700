// Pixels of 1, 2, 4 or 8 bits in packed rows, the leftmost in the most significant bits.
#include "imaginglibrary/core/packing.h"

#include <algorithm>

namespace imaginglibrary {

void UnpackPixels(const std::uint8_t* row, std::size_t first, unsigned bits, std::uint8_t* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = PackedAt(row, first + i, bits);
    }
}

void PackPixels(const std::uint8_t* values, unsigned bits, std::uint8_t* row, std::size_t count) {
    std::fill_n(row, (count * bits + 7) / 8, std::uint8_t{0});
    for (std::size_t i = 0; i < count; ++i) {
        PutPacked(row, i, bits, values[i]);
    }
}

} // namespace imaginglibrary
