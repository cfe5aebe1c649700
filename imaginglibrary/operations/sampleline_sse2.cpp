// Reads a picture along a line, between its pixels: the form for processors with SSE2.
#include "imaginglibrary/operations/sampleline.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace imaginglibrary {

namespace {

// Two neighbouring pixels, their channels in 16 bits with six behind the point; and the two behind them.
struct FourPixels {
    __m128i first;
    __m128i second;
};

inline __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
inline __m128i LoadAligned(const void* from) { return _mm_load_si128(static_cast<const __m128i*>(from)); }

inline unsigned PhaseOf(std::int64_t place) {
    return static_cast<std::uint32_t>(place) >> (32 - SampleKernel::PhaseBits);
}

// The weighted sum of four rows over four pixels from `pixels` on.
[[gnu::always_inline]] inline FourPixels SumOfRows(const std::uint8_t* pixels, std::size_t rowBytes,
                                                   const std::uint16_t (&weights)[4][8]) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i row0 = Load(pixels);
    const __m128i row1 = Load(pixels + rowBytes);
    const __m128i row2 = Load(pixels + 2 * rowBytes);
    const __m128i row3 = Load(pixels + 3 * rowBytes);
    const __m128i weight0 = LoadAligned(weights[0]);
    const __m128i weight1 = LoadAligned(weights[1]);
    const __m128i weight2 = LoadAligned(weights[2]);
    const __m128i weight3 = LoadAligned(weights[3]);
    const auto sum = [&](auto unpack) __attribute__((always_inline)) {
        const __m128i inner =
            _mm_add_epi16(_mm_mulhi_epu16(unpack(row1), weight1), _mm_mulhi_epu16(unpack(row2), weight2));
        const __m128i outer =
            _mm_add_epi16(_mm_mulhi_epu16(unpack(row0), weight0), _mm_mulhi_epu16(unpack(row3), weight3));
        return _mm_sub_epi16(inner, outer);
    };
    return {sum([&](__m128i row) { return _mm_unpacklo_epi8(zero, row); }),
            sum([&](__m128i row) { return _mm_unpackhi_epi8(zero, row); })};
}

// The four pixels times their weights; the first and the third are summed up, and the second and the fourth.
[[gnu::always_inline]] inline __m128i HalfSums(const FourPixels& pixels, const std::int16_t (&weights)[4][4]) {
    return _mm_add_epi16(_mm_mulhi_epi16(pixels.first, LoadAligned(weights[0])),
                         _mm_mulhi_epi16(pixels.second, LoadAligned(weights[2])));
}

// Two samples as bytes: eight of them, and then the same again.
[[gnu::always_inline]] inline __m128i Finished(__m128i first, __m128i second) {
    const __m128i sums = _mm_add_epi16(_mm_unpacklo_epi64(first, second), _mm_unpackhi_epi64(first, second));
    const __m128i rounded = _mm_srai_epi16(_mm_add_epi16(sums, _mm_set1_epi16(10)), 4);
    return _mm_packus_epi16(rounded, rounded);
}

// Stores `count` samples, of which `next` gives the half sums.
template <class Next>
[[gnu::always_inline]] inline void StoreSamples(std::uint8_t* pixels, std::size_t count, Next next) {
    for (; count >= 2; count -= 2, pixels += 8) {
        const __m128i first = next();
        const __m128i second = next();
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), Finished(first, second));
    }
    if (count > 0) {
        const __m128i last = next();
        const int pixel = _mm_cvtsi128_si32(Finished(last, last));
        std::memcpy(pixels, &pixel, sizeof pixel);
    }
}

// For ways along a row: what the samples have in common, the sums of the rows, is worked out once for every column.
void SampleAlongRow(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    constexpr std::int64_t MostColumns = 512;
    alignas(16) std::int16_t sums[(MostColumns + 4) * 4];
    const std::uint8_t* const row = level.Padded() + static_cast<std::size_t>(way.y >> 32) * level.RowBytes();
    const std::int64_t step = std::abs(way.stepX);
    while (count > 0) {
        const auto reachable = step == 0 ? count : static_cast<std::size_t>(((MostColumns - 5) << 32) / step) + 1;
        const std::size_t some = std::min(count, reachable);
        const std::int64_t last = way.x + way.stepX * static_cast<std::int64_t>(some - 1);
        const std::int64_t firstColumn = std::min(way.x, last) >> 32;
        const std::int64_t endColumn = (std::max(way.x, last) >> 32) + 4;
        for (std::int64_t column = firstColumn; column < endColumn; column += 4) {
            const FourPixels four = SumOfRows(row + column * 4, level.RowBytes(), kernel.vertical[PhaseOf(way.y)]);
            auto* const to = reinterpret_cast<__m128i*>(sums + (column - firstColumn) * 4);
            _mm_store_si128(to, four.first);
            _mm_store_si128(to + 1, four.second);
        }
        StoreSamples(
            pixels, some, [&]() __attribute__((always_inline)) {
                const std::int16_t* const from = sums + ((way.x >> 32) - firstColumn) * 4;
                const __m128i half = HalfSums({Load(from), Load(from + 8)}, kernel.horizontal[PhaseOf(way.x)]);
                way.x += way.stepX;
                return half;
            });
        pixels += some * 4;
        count -= some;
    }
}

void SampleAcrossRows(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                      std::size_t count) {
    const std::uint8_t* const padded = level.Padded();
    const std::size_t rowBytes = level.RowBytes();
    StoreSamples(
        pixels, count, [&]() __attribute__((always_inline)) {
            const std::uint8_t* const first =
                padded + static_cast<std::size_t>(way.y >> 32) * rowBytes + static_cast<std::size_t>(way.x >> 32) * 4;
            _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(first) + way.ahead),
                         _MM_HINT_T0);
            const __m128i half = HalfSums(SumOfRows(first, rowBytes, kernel.vertical[PhaseOf(way.y)]),
                                          kernel.horizontal[PhaseOf(way.x)]);
            way.x += way.stepX;
            way.y += way.stepY;
            return half;
        });
}

} // namespace

void SampleLineSse2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    constexpr std::int64_t TwoColumns = std::int64_t{2} << 32; // with longer steps most columns would be for nothing
    if (way.stepY == 0 && count > 1 && std::abs(way.stepX) <= TwoColumns) {
        SampleAlongRow(level, kernel, way, pixels, count);
    } else {
        SampleAcrossRows(level, kernel, way, pixels, count);
    }
}

} // namespace imaginglibrary

#endif
