// Reads a picture along a line, between its pixels: the form for processors with AVX2.
#include "imaginglibrary/operations/sampleline.h"

#if defined(__SSE2__)

#include <immintrin.h>

// What stands below may only be called where the processor has it; what the headers above define must run everywhere.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace imaginglibrary {

namespace {

inline unsigned WidePhaseOf(std::int64_t place) {
    return static_cast<std::uint32_t>(place) >> (32 - SampleKernel::PhaseBits);
}

// Sixteen bytes of two samples side by side.
[[gnu::always_inline]] inline __m256i LoadBoth(const void* first, const void* second) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(first))),
                                   _mm_loadu_si128(static_cast<const __m128i*>(second)), 1);
}

// Two rows' part of four pixels of two samples, half of them: `unpacked` are their bytes in the upper half of 16 bits.
[[gnu::always_inline]] inline __m256i PartOfRows(__m256i unpacked, __m256i weight, __m256i otherUnpacked,
                                                 __m256i otherWeight) {
    return _mm256_add_epi16(_mm256_mulhi_epu16(unpacked, weight), _mm256_mulhi_epu16(otherUnpacked, otherWeight));
}

// One of the two samples that are worked out together.
struct Sample {
    const std::uint8_t* pixels;
    const std::uint16_t (*vertical)[8];
    const std::int16_t (*horizontal)[4];
};

// Of each sample the weighted pixels, the first and the third summed up, and the second and the fourth.
[[gnu::always_inline]] inline __m256i HalfSumsOfBoth(const Sample& first, const Sample& second, std::size_t rowBytes) {
    const __m256i zero = _mm256_setzero_si256();
    const auto row = [&](std::size_t i) __attribute__((always_inline)) {
        return LoadBoth(first.pixels + i * rowBytes, second.pixels + i * rowBytes);
    };
    const auto weight = [&](std::size_t i) __attribute__((always_inline)) {
        return LoadBoth(first.vertical[i], second.vertical[i]);
    };
    const __m256i row0 = row(0), row1 = row(1), row2 = row(2), row3 = row(3);
    const __m256i weight0 = weight(0), weight1 = weight(1), weight2 = weight(2), weight3 = weight(3);
    const __m256i left = _mm256_sub_epi16(
        PartOfRows(_mm256_unpacklo_epi8(zero, row1), weight1, _mm256_unpacklo_epi8(zero, row2), weight2),
        PartOfRows(_mm256_unpacklo_epi8(zero, row0), weight0, _mm256_unpacklo_epi8(zero, row3), weight3));
    const __m256i right = _mm256_sub_epi16(
        PartOfRows(_mm256_unpackhi_epi8(zero, row1), weight1, _mm256_unpackhi_epi8(zero, row2), weight2),
        PartOfRows(_mm256_unpackhi_epi8(zero, row0), weight0, _mm256_unpackhi_epi8(zero, row3), weight3));
    return _mm256_add_epi16(_mm256_mulhi_epi16(left, LoadBoth(first.horizontal[0], second.horizontal[0])),
                            _mm256_mulhi_epi16(right, LoadBoth(first.horizontal[2], second.horizontal[2])));
}

// Four samples as bytes, of the half sums of two and two.
[[gnu::always_inline]] inline __m128i FinishedFour(__m256i firstTwo, __m256i lastTwo) {
    const __m256i sums =
        _mm256_add_epi16(_mm256_unpacklo_epi64(firstTwo, lastTwo), _mm256_unpackhi_epi64(firstTwo, lastTwo));
    const __m256i rounded = _mm256_srai_epi16(_mm256_add_epi16(sums, _mm256_set1_epi16(10)), 4);
    const __m256i bytes = _mm256_packus_epi16(rounded, rounded); // the first and third; the second and fourth
    return _mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
}

} // namespace

void SampleLineAvx2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count) {
    const std::uint8_t* const padded = level.Padded();
    const std::size_t rowBytes = level.RowBytes();
    const auto next = [&]() __attribute__((always_inline)) {
        const std::uint8_t* const first =
            padded + static_cast<std::size_t>(way.y >> 32) * rowBytes + static_cast<std::size_t>(way.x >> 32) * 4;
        _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(first) + way.ahead), _MM_HINT_T0);
        const Sample sample{first, kernel.vertical[WidePhaseOf(way.y)], kernel.horizontal[WidePhaseOf(way.x)]};
        way.x += way.stepX;
        way.y += way.stepY;
        return sample;
    };
    // Along a row the narrower form has a shorter way.
    for (; way.stepY != 0 && count >= 4; count -= 4, pixels += 16) {
        const Sample first = next();
        const Sample second = next();
        const __m256i firstTwo = HalfSumsOfBoth(first, second, rowBytes);
        const Sample third = next();
        const Sample fourth = next();
        const __m256i lastTwo = HalfSumsOfBoth(third, fourth, rowBytes);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), FinishedFour(firstTwo, lastTwo));
    }
    SampleLineSse2(level, kernel, way, pixels, count);
}

} // namespace imaginglibrary

#pragma GCC pop_options

#endif
