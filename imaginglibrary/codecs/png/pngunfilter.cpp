// Undoing the filters of PNG.
//
// Upwards, every loop can be done for many bytes at once; this file is compiled with that asked for.
#include "imaginglibrary/codecs/png/pngunfilter.h"

#include <array>
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

// What stands left of a byte, a pixel further, is kept beside the row, for it was written a moment ago.
template <std::size_t PixelBytes, class Foretell>
void Restore(std::span<std::uint8_t> row, const std::uint8_t* above, Foretell foretell) {
    std::array<std::uint8_t, PixelBytes> left{}, upperLeft{};
    const auto restore = [&](std::size_t i, std::size_t channel) {
        const int foretold = foretell(left[channel], above[i], upperLeft[channel]);
        upperLeft[channel] = above[i];
        left[channel] = static_cast<std::uint8_t>(row[i] + foretold);
        row[i] = left[channel];
    };
    for (std::size_t i = 0; i < row.size(); i += PixelBytes) {
        for (std::size_t channel = 0; channel < PixelBytes; ++channel) {
            restore(i + channel, channel);
        }
    }
}

template <std::size_t PixelBytes>
void Unfilter(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above) {
    switch (filter) {
    case PngFilter::None:
        return;
    case PngFilter::Sub:
        return Restore<PixelBytes>(row, above, [](int left, int, int) { return left; });
    case PngFilter::Up:
        return Restore<PixelBytes>(row, above, [](int, int up, int) { return up; });
    case PngFilter::Average:
        return Restore<PixelBytes>(row, above, [](int left, int up, int) { return (left + up) >> 1; });
    case PngFilter::Paeth:
        return Restore<PixelBytes>(row, above, Foretold);
    }
}

} // namespace

void UnfilterRowScalar(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above,
                       std::size_t pixelBytes) {
    switch (pixelBytes) {
    case 1:
        return Unfilter<1>(filter, row, above);
    case 2:
        return Unfilter<2>(filter, row, above);
    case 3:
        return Unfilter<3>(filter, row, above);
    case 4:
        return Unfilter<4>(filter, row, above);
    case 6:
        return Unfilter<6>(filter, row, above);
    default:
        return Unfilter<8>(filter, row, above);
    }
}

void UnfilterRow(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes) {
#if defined(__SSE2__)
    if (pixelBytes > 2 && filter != PngFilter::Up) {
        return UnfilterRowSse2(filter, row, above, pixelBytes);
    }
#endif
    UnfilterRowScalar(filter, row, above, pixelBytes);
}

} // namespace imaginglibrary
