// The filters of PNG, which write each byte of a row as its difference from what its neighbours foretell.
//
// Every loop below reads only the rows as they are, so the compiler can work on many bytes at once; this file is
// compiled with that asked for.
#include "imaginglibrary/codecs/png/pngfilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace imaginglibrary {

namespace {

// Which of left, above and upper left is nearest to left + above - upper left, the first of them where they are equal.
inline int Foretold(int left, int above, int upperLeft) {
    const int fromLeft = std::abs(above - upperLeft);
    const int fromAbove = std::abs(left - upperLeft);
    const int fromUpperLeft = std::abs(left + above - 2 * upperLeft);
    const int nearer = fromAbove <= fromUpperLeft ? above : upperLeft;
    return fromLeft <= fromAbove && fromLeft <= fromUpperLeft ? left : nearer;
}

// `count` bytes; `before` is a pixel further left than `row`, and `aboveBefore` than `above`.
void Subtract(const std::uint8_t* __restrict row, const std::uint8_t* __restrict foretold, std::size_t count,
              std::uint8_t* __restrict to) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<std::uint8_t>(row[i] - foretold[i]);
    }
}

void SubtractAverage(const std::uint8_t* __restrict row, const std::uint8_t* __restrict before,
                     const std::uint8_t* __restrict above, std::size_t count, std::uint8_t* __restrict to) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<std::uint8_t>(row[i] - ((before[i] + above[i]) >> 1));
    }
}

void SubtractPaeth(const std::uint8_t* __restrict row, const std::uint8_t* __restrict before,
                   const std::uint8_t* __restrict above, const std::uint8_t* __restrict aboveBefore, std::size_t count,
                   std::uint8_t* __restrict to) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<std::uint8_t>(row[i] - Foretold(before[i], above[i], aboveBefore[i]));
    }
}

} // namespace

void FilterRow(PngFilter filter, std::span<const std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes,
               std::uint8_t* to) {
    // Left of the first pixel there are zeros.
    const std::size_t first = std::min(pixelBytes, row.size());
    const std::size_t rest = row.size() - first;
    const std::uint8_t* const bytes = row.data();
    switch (filter) {
    case PngFilter::None:
        std::copy(row.begin(), row.end(), to);
        return;
    case PngFilter::Sub:
        std::copy_n(bytes, first, to);
        return Subtract(bytes + first, bytes, rest, to + first);
    case PngFilter::Up:
        return Subtract(bytes, above, row.size(), to);
    case PngFilter::Average:
        for (std::size_t i = 0; i < first; ++i) {
            to[i] = static_cast<std::uint8_t>(bytes[i] - (above[i] >> 1));
        }
        return SubtractAverage(bytes + first, bytes, above + first, rest, to + first);
    case PngFilter::Paeth:
        Subtract(bytes, above, first, to);
        return SubtractPaeth(bytes + first, bytes, above + first, above, rest, to + first);
    }
}

double EntropyOf(std::span<const std::uint8_t> bytes) {
    std::array<std::uint32_t, 256> counts{};
    for (const std::uint8_t byte : bytes) {
        ++counts[byte];
    }
    double bits = 0;
    for (const std::uint32_t count : counts) {
        if (count != 0) {
            bits += count * std::log2(static_cast<double>(bytes.size()) / count);
        }
    }
    return bits;
}

} // namespace imaginglibrary
