// The filters of PNG, which write each byte of a row as its difference from what its neighbours foretell.
// Source: the PNG standard (ISO/IEC 15948), "Filter types for filter method 0".
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace imaginglibrary {

// Under the numbers that stand before each row of a file.
enum class PngFilter : std::uint8_t {
    None = 0,
    Sub = 1,
    Up = 2,
    Average = 3,
    Paeth = 4,
};

// What filters need to know of a picture's rows.
struct PngRowForm {
    std::size_t rowBytes = 0;
    std::size_t pixelBytes = 1; // 1 for smaller pixels too
    bool isIndexed = false;     // neighbouring indexes say nothing about each other, so they are not filtered
};

// Filters one row of `above`'s and `to`'s length, whose pixels take `pixelBytes` whole bytes, 1 for smaller ones. Above
// the first row there are zeros.
void FilterRow(PngFilter filter, std::span<const std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes,
               std::uint8_t* to);

// How many bits the bytes take at least where each is coded on its own: their entropy.
double EntropyOf(std::span<const std::uint8_t> bytes);

} // namespace imaginglibrary
