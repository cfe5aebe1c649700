// Reads a picture along a line, between its pixels: the form for processors with SSE2.
#include "imaginglibrary/operations/columnsatonce.h"
#include "imaginglibrary/operations/sampleline.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cstring>

namespace imaginglibrary {

namespace {

// The weighted sums of four rows over two neighbouring pixels and over the two behind them, a channel in 16 bits.
struct FourPixels {
    __m128i first;
    __m128i second;
};

inline __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
inline __m128i LoadAligned(const void* from) { return _mm_load_si128(static_cast<const __m128i*>(from)); }

// The weights of four rows, each eight times.
struct RowWeights {
    explicit RowWeights(const std::int8_t (&vertical)[2][16]) {
        const __m128i upper = LoadAligned(vertical[0]);
        const __m128i lower = LoadAligned(vertical[1]);
        rows[0] = _mm_srai_epi16(_mm_slli_epi16(upper, 8), 8);
        rows[1] = _mm_srai_epi16(upper, 8);
        rows[2] = _mm_srai_epi16(_mm_slli_epi16(lower, 8), 8);
        rows[3] = _mm_srai_epi16(lower, 8);
    }

    __m128i rows[4];
};

// The weighted sum of four rows over four pixels from `pixels` on.
[[gnu::always_inline]] inline FourPixels SumOfRows(const std::uint8_t* pixels, std::size_t rowBytes,
                                                   const RowWeights& weights) {
    const __m128i zero = _mm_setzero_si128();
    FourPixels sums{zero, zero};
    for (std::size_t i = 0; i < 4; ++i) {
        const __m128i row = Load(pixels + i * rowBytes);
        sums.first = _mm_add_epi16(sums.first, _mm_mullo_epi16(_mm_unpacklo_epi8(row, zero), weights.rows[i]));
        sums.second = _mm_add_epi16(sums.second, _mm_mullo_epi16(_mm_unpackhi_epi8(row, zero), weights.rows[i]));
    }
    return sums;
}

// The four pixels times their weights; the first and the third are summed up, and the second and the fourth.
[[gnu::always_inline]] inline __m128i HalfSums(const FourPixels& pixels, const std::int16_t (&weights)[2][8]) {
    return _mm_add_epi16(_mm_mulhi_epi16(pixels.first, LoadAligned(weights[0])),
                         _mm_mulhi_epi16(pixels.second, LoadAligned(weights[1])));
}

// Two samples as bytes: eight of them, and then the same again.
[[gnu::always_inline]] inline __m128i Finished(__m128i first, __m128i second) {
    const __m128i sums = _mm_add_epi16(_mm_unpacklo_epi64(first, second), _mm_unpackhi_epi64(first, second));
    const __m128i rounded = _mm_srai_epi16(_mm_add_epi16(sums, _mm_set1_epi16(18)), 5);
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
    alignas(16) std::int16_t sums[ColumnsAtOnce::Room * 4];
    const RowWeights vertical(kernel.vertical[SampleWay::PhaseOf(way.y)]);
    while (count > 0) {
        const ColumnsAtOnce columns(way, count);
        const std::uint8_t* const row =
            level.Padded() + SampleWay::WholeOf(way.y) * level.RowBytes() + columns.first * 4;
        for (std::size_t column = 0; column < columns.count; column += 4) {
            const FourPixels four = SumOfRows(row + column * 4, level.RowBytes(), vertical);
            auto* const to = reinterpret_cast<__m128i*>(sums + column * 4);
            _mm_store_si128(to, four.first);
            _mm_store_si128(to + 1, four.second);
        }
        const auto next = [&]() __attribute__((always_inline)) {
            const std::int16_t* const from = sums + (SampleWay::WholeOf(way.x) - columns.first) * 4;
            const auto& horizontal = kernel.horizontal[SampleWay::PhaseOf(way.x)];
            way.Advance();
            return HalfSums({Load(from), Load(from + 8)}, horizontal);
        };
        StoreSamples(pixels, columns.samples, next);
        pixels += columns.samples * 4;
        count -= columns.samples;
    }
}

void SampleAcrossRows(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                      std::size_t count) {
    const std::uint8_t* const padded = level.Padded();
    const std::size_t rowBytes = level.RowBytes();
    const auto next = [&]() __attribute__((always_inline)) {
        const std::uint8_t* const first = way.First(padded, rowBytes);
        _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(first) + way.ahead), _MM_HINT_T0);
        const RowWeights vertical(kernel.vertical[SampleWay::PhaseOf(way.y)]);
        const auto& horizontal = kernel.horizontal[SampleWay::PhaseOf(way.x)];
        way.Advance();
        return HalfSums(SumOfRows(first, rowBytes, vertical), horizontal);
    };
    StoreSamples(pixels, count, next);
}

} // namespace

void SampleLineSse2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    if (ColumnsAtOnce::Suit(way, count)) {
        SampleAlongRow(level, kernel, way, pixels, count);
    } else {
        SampleAcrossRows(level, kernel, way, pixels, count);
    }
}

} // namespace imaginglibrary

#endif
