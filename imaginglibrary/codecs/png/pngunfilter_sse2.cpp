// Undoing the filters of PNG: the form for processors with SSE2, all bytes of a pixel at once.
#include "imaginglibrary/codecs/png/pngunfilter.h"

#if defined(__SSE2__)

#include <algorithm>
#include <cstring>

#include <emmintrin.h>

namespace imaginglibrary {

namespace {

// What is loaded for a pixel: its bytes and, where those are no number of the processor's, a few of the next pixel.
template <std::size_t PixelBytes> constexpr std::size_t LoadedBytes = PixelBytes == 3   ? 4
                                                                      : PixelBytes == 6 ? 8
                                                                                        : PixelBytes;

template <std::size_t PixelBytes> __m128i Load(const std::uint8_t* from) {
    if constexpr (LoadedBytes<PixelBytes> == 8) {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    } else {
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, from, LoadedBytes<PixelBytes>);
        return _mm_cvtsi32_si128(static_cast<int>(bytes));
    }
}

template <std::size_t PixelBytes> void Store(__m128i pixel, std::uint8_t* to) {
    if constexpr (PixelBytes == 8) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), pixel);
    } else {
        const auto first = static_cast<std::uint32_t>(_mm_cvtsi128_si32(pixel));
        std::memcpy(to, &first, std::min<std::size_t>(PixelBytes, 4));
        if constexpr (PixelBytes == 6) {
            const auto rest = static_cast<std::uint16_t>(_mm_extract_epi16(pixel, 2));
            std::memcpy(to + 4, &rest, 2);
        }
    }
}

struct Averaging {
    __m128i left = _mm_setzero_si128();

    __m128i Next(__m128i pixel, __m128i above) {
        // The processor's own average rounds up.
        const __m128i excess = _mm_and_si128(_mm_xor_si128(left, above), _mm_set1_epi8(1));
        left = _mm_add_epi8(pixel, _mm_sub_epi8(_mm_avg_epu8(left, above), excess));
        return left;
    }
};

struct Adding {
    __m128i left = _mm_setzero_si128();

    __m128i Next(__m128i pixel, __m128i /*above*/) {
        left = _mm_add_epi8(pixel, left);
        return left;
    }
};

inline __m128i Choose(__m128i mask, __m128i chosen, __m128i other) {
    return _mm_or_si128(_mm_and_si128(mask, chosen), _mm_andnot_si128(mask, other));
}

// In 16 bits a byte. Nearest to left + above - upper left is the lesser of left and above where upper left lies so far
// above them that it is farther away than either, the greater one where it lies as far below, and else upper left.
struct Foretelling {
    __m128i left = _mm_setzero_si128();
    __m128i upperLeft = _mm_setzero_si128();

    __m128i Next(__m128i pixel, __m128i aboveBytes) {
        const __m128i zero = _mm_setzero_si128();
        const __m128i above = _mm_unpacklo_epi8(aboveBytes, zero);
        const __m128i least = _mm_min_epi16(left, above);
        const __m128i greatest = _mm_max_epi16(left, above);
        const __m128i threeTimes = _mm_add_epi16(upperLeft, _mm_add_epi16(upperLeft, upperLeft));
        const __m128i bound = _mm_sub_epi16(_mm_sub_epi16(threeTimes, above), left);
        const __m128i atMostUpperLeft = Choose(_mm_cmpgt_epi16(greatest, bound), upperLeft, least);
        const __m128i foretold = Choose(_mm_cmpgt_epi16(bound, least), atMostUpperLeft, greatest);
        upperLeft = above;
        // Bytes are added, so that nothing is carried into the upper halves.
        left = _mm_add_epi8(_mm_unpacklo_epi8(pixel, zero), foretold);
        return _mm_packus_epi16(left, left);
    }
};

template <std::size_t PixelBytes, class Undoing> void Undo(std::span<std::uint8_t> row, const std::uint8_t* above) {
    Undoing undoing;
    std::size_t i = 0;
    for (; i + LoadedBytes<PixelBytes> <= row.size(); i += PixelBytes) {
        Store<PixelBytes>(undoing.Next(Load<PixelBytes>(&row[i]), Load<PixelBytes>(above + i)), &row[i]);
    }
    if (i < row.size()) {
        std::uint8_t last[8]{}, lastAbove[8]{};
        std::memcpy(last, &row[i], PixelBytes);
        std::memcpy(lastAbove, above + i, PixelBytes);
        Store<PixelBytes>(undoing.Next(Load<PixelBytes>(last), Load<PixelBytes>(lastAbove)), &row[i]);
    }
}

template <std::size_t PixelBytes>
void UndoFilter(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above) {
    switch (filter) {
    case PngFilter::Sub:
        return Undo<PixelBytes, Adding>(row, above);
    case PngFilter::Average:
        return Undo<PixelBytes, Averaging>(row, above);
    case PngFilter::Paeth:
        return Undo<PixelBytes, Foretelling>(row, above);
    default:
        return;
    }
}

} // namespace

void UnfilterRowSse2(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes) {
    switch (pixelBytes) {
    case 3:
        return UndoFilter<3>(filter, row, above);
    case 4:
        return UndoFilter<4>(filter, row, above);
    case 6:
        return UndoFilter<6>(filter, row, above);
    default:
        return UndoFilter<8>(filter, row, above);
    }
}

} // namespace imaginglibrary

#endif
