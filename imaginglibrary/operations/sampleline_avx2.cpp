// Reads a picture along a line, between its pixels: the form for processors with AVX2.
#include "imaginglibrary/operations/columnsatonce.h"
#include "imaginglibrary/operations/sampleline.h"

#if defined(__SSE2__)

#include <immintrin.h>

// What stands below may only be called where the processor has it; what the headers above define must run everywhere.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace imaginglibrary {

namespace {

// Sixteen bytes of two samples side by side.
[[gnu::always_inline]] inline __m256i LoadBoth(const void* first, const void* second) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(first))),
                                   _mm_loadu_si128(static_cast<const __m128i*>(second)), 1);
}

// The weighted sum of four rows, two neighbouring pixels of each half and the two behind them, six bits behind the
// point. `row` and `weight` give those of a number; one row after the other, for there are only eight registers on some
// machines.
struct WideSums {
    __m256i left;
    __m256i right;
};

template <class Row, class Weight> [[gnu::always_inline]] inline WideSums SumOfFour(Row row, Weight weight) {
    const __m256i zero = _mm256_setzero_si256();
    const auto part = [&](std::size_t i) __attribute__((always_inline)) {
        const __m256i bytes = row(i);
        const __m256i factor = weight(i);
        return WideSums{_mm256_mulhi_epu16(_mm256_unpacklo_epi8(zero, bytes), factor),
                        _mm256_mulhi_epu16(_mm256_unpackhi_epi8(zero, bytes), factor)};
    };
    WideSums sums = part(1);
    const WideSums third = part(2);
    sums = {_mm256_add_epi16(sums.left, third.left), _mm256_add_epi16(sums.right, third.right)};
    const WideSums first = part(0);
    sums = {_mm256_sub_epi16(sums.left, first.left), _mm256_sub_epi16(sums.right, first.right)};
    const WideSums last = part(3);
    return {_mm256_sub_epi16(sums.left, last.left), _mm256_sub_epi16(sums.right, last.right)};
}

// One of the two samples that are worked out together.
struct Sample {
    const std::uint8_t* pixels;
    const std::uint16_t (*vertical)[8];
    const std::int16_t (*horizontal)[4];
};

// Of each sample the weighted pixels, the first and the third summed up, and the second and the fourth.
[[gnu::always_inline]] inline __m256i HalfSumsOfBoth(const Sample& first, const Sample& second, std::size_t rowBytes) {
    const auto row = [&](std::size_t i) __attribute__((always_inline)) {
        return LoadBoth(first.pixels + i * rowBytes, second.pixels + i * rowBytes);
    };
    const auto weight = [&](std::size_t i) __attribute__((always_inline)) {
        return LoadBoth(first.vertical[i], second.vertical[i]);
    };
    const WideSums sums = SumOfFour(row, weight);
    return _mm256_add_epi16(_mm256_mulhi_epi16(sums.left, LoadBoth(first.horizontal[0], second.horizontal[0])),
                            _mm256_mulhi_epi16(sums.right, LoadBoth(first.horizontal[2], second.horizontal[2])));
}

// Four samples as bytes, of the half sums of two and two.
[[gnu::always_inline]] inline __m128i FinishedFour(__m256i firstTwo, __m256i lastTwo) {
    const __m256i sums =
        _mm256_add_epi16(_mm256_unpacklo_epi64(firstTwo, lastTwo), _mm256_unpackhi_epi64(firstTwo, lastTwo));
    const __m256i rounded = _mm256_srai_epi16(_mm256_add_epi16(sums, _mm256_set1_epi16(10)), 4);
    const __m256i bytes = _mm256_packus_epi16(rounded, rounded); // the first and third; the second and fourth
    return _mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
}

// Stores `count` samples, four at a time, of which `next` gives the half sums of two; gives back how many are left.
template <class Next>
[[gnu::always_inline]] inline std::size_t StoreInFours(std::uint8_t* pixels, std::size_t count, Next next) {
    for (; count >= 4; count -= 4, pixels += 16) {
        const __m256i firstTwo = next();
        const __m256i lastTwo = next();
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), FinishedFour(firstTwo, lastTwo));
    }
    return count;
}

[[gnu::always_inline]] inline __m256i LoadBytes(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

[[gnu::always_inline]] inline __m256i Everywhere(const std::uint16_t (&weight)[8]) {
    return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(weight)));
}

// The weighted sums of four rows over columns from `row` on, eight at a time.
void SumColumns(const std::uint8_t* row, std::size_t rowBytes, const std::uint16_t (&weights)[4][8], std::int16_t* sums,
                std::size_t count) {
    const __m256i weight0 = Everywhere(weights[0]), weight1 = Everywhere(weights[1]);
    const __m256i weight2 = Everywhere(weights[2]), weight3 = Everywhere(weights[3]);
    for (std::size_t column = 0; column < count; column += 8, row += 32, sums += 32) {
        const auto rowAt = [&](std::size_t i) __attribute__((always_inline)) { return LoadBytes(row + i * rowBytes); };
        const auto weight = [&](std::size_t i) __attribute__((always_inline)) {
            return i == 0 ? weight0 : i == 1 ? weight1 : i == 2 ? weight2 : weight3;
        };
        const WideSums wide = SumOfFour(rowAt, weight);
        auto* const to = reinterpret_cast<__m256i*>(sums);
        _mm256_store_si256(to, _mm256_permute2x128_si256(wide.left, wide.right, 0x20));
        _mm256_store_si256(to + 1, _mm256_permute2x128_si256(wide.left, wide.right, 0x31));
    }
}

void SampleAlongRowWide(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                        std::size_t count) {
    alignas(32) std::int16_t sums[ColumnsAtOnce::Room * 4];
    while (count >= 4) {
        const ColumnsAtOnce columns(way, count);
        SumColumns(level.Padded() + SampleWay::WholeOf(way.y) * level.RowBytes() + columns.first * 4, level.RowBytes(),
                   kernel.vertical[SampleWay::PhaseOf(way.y)], sums, columns.count);
        const auto sumsAt = [&](std::uint32_t place) __attribute__((always_inline)) {
            return sums + (SampleWay::WholeOf(place) - columns.first) * 4;
        };
        const auto nextTwo = [&]() __attribute__((always_inline)) {
            const std::int16_t* const first = sumsAt(way.x);
            const auto& firstWeights = kernel.horizontal[SampleWay::PhaseOf(way.x)];
            way.Advance();
            const std::int16_t* const second = sumsAt(way.x);
            const auto& secondWeights = kernel.horizontal[SampleWay::PhaseOf(way.x)];
            way.Advance();
            return _mm256_add_epi16(
                _mm256_mulhi_epi16(LoadBoth(first, second), LoadBoth(firstWeights[0], secondWeights[0])),
                _mm256_mulhi_epi16(LoadBoth(first + 8, second + 8), LoadBoth(firstWeights[2], secondWeights[2])));
        };
        const std::size_t done = columns.samples - StoreInFours(pixels, columns.samples, nextTwo);
        pixels += done * 4;
        count -= done;
    }
    SampleLineSse2(level, kernel, way, pixels, count);
}

void SampleAcrossRowsWide(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                          std::size_t count) {
    const std::uint8_t* const padded = level.Padded();
    const std::size_t rowBytes = level.RowBytes();
    const auto next = [&]() __attribute__((always_inline)) {
        const std::uint8_t* const first = way.First(padded, rowBytes);
        _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(first) + way.ahead), _MM_HINT_T0);
        const Sample sample{first, kernel.vertical[SampleWay::PhaseOf(way.y)],
                            kernel.horizontal[SampleWay::PhaseOf(way.x)]};
        way.Advance();
        return sample;
    };
    const auto nextTwo = [&]() __attribute__((always_inline)) {
        const Sample first = next();
        const Sample second = next();
        return HalfSumsOfBoth(first, second, rowBytes);
    };
    const std::size_t left = StoreInFours(pixels, count, nextTwo);
    SampleLineSse2(level, kernel, way, pixels + (count - left) * 4, left);
}

} // namespace

void SampleLineAvx2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    if (ColumnsAtOnce::Suit(way, count)) {
        SampleAlongRowWide(level, kernel, way, pixels, count);
    } else {
        SampleAcrossRowsWide(level, kernel, way, pixels, count);
    }
}

} // namespace imaginglibrary

#pragma GCC pop_options

#endif
