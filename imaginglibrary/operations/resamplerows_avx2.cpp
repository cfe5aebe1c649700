// The sums that resampled pictures are made of, row by row: the form for processors with AVX2.
#include "imaginglibrary/operations/resamplerows.h"

#if defined(__SSE2__)

#include <immintrin.h>

// What stands below may only be called where the processor has it; what the headers above define must run everywhere.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace imaginglibrary {

namespace {

template <int Bits> inline __m256i Rounded(__m256i sums) {
    return _mm256_srai_epi32(_mm256_add_epi32(sums, _mm256_set1_epi32(1 << (Bits - 1))), Bits);
}

inline __m128i LoadHalf(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
inline __m256i Load(const void* from) { return _mm256_loadu_si256(static_cast<const __m256i*>(from)); }

// A row in each half.
void NarrowRowsAvx2(const std::uint8_t* const (&rows)[2], const ResampleKernel& kernel,
                    std::int16_t* const (&narrowed)[2]) {
    // The channels of pixels 0 and 1 in turns, and those of pixels 2 and 3.
    const __m256i inTurns =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
    const __m256i zero = _mm256_setzero_si256();
    for (std::size_t i = 0; i < kernel.Count(); ++i) {
        const std::size_t first = ResampledChannels * kernel.First(i);
        const std::int16_t* weights = kernel.Weights(i);
        __m256i even = zero, odd = zero;
        for (std::size_t tap = 0; tap < kernel.Taps(); tap += 4) {
            const std::size_t at = first + tap * ResampledChannels;
            const __m256i pairs = _mm256_shuffle_epi8(
                _mm256_inserti128_si256(_mm256_castsi128_si256(LoadHalf(rows[0] + at)), LoadHalf(rows[1] + at), 1),
                inTurns);
            const __m256i four =
                _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(weights + tap)));
            even = _mm256_add_epi32(
                even, _mm256_madd_epi16(_mm256_unpacklo_epi8(pairs, zero), _mm256_shuffle_epi32(four, 0x00)));
            odd = _mm256_add_epi32(
                odd, _mm256_madd_epi16(_mm256_unpackhi_epi8(pairs, zero), _mm256_shuffle_epi32(four, 0x55)));
        }
        const __m256i rounded = Rounded<WeightBits - BetweenBits>(_mm256_add_epi32(even, odd));
        const __m256i packed = _mm256_packs_epi32(rounded, rounded);
        const std::size_t to = i * ResampledChannels;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(narrowed[0] + to), _mm256_castsi256_si128(packed));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(narrowed[1] + to), _mm256_extracti128_si256(packed, 1));
    }
}

// No channel above the fourth one of its pixel.
inline __m128i CutToAlpha(__m128i pixels) {
    const __m128i alphas =
        _mm_shuffle_epi8(pixels, _mm_setr_epi8(3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15));
    return _mm_min_epu8(pixels, alphas);
}

void SumRowsAvx2(const std::int16_t* const* narrowed, const std::int16_t* weights, std::size_t count, std::uint8_t* row,
                 std::size_t pixels) {
    for (std::size_t at = 0; at < pixels * ResampledChannels; at += 16) {
        __m256i low = _mm256_setzero_si256(), high = low;
        for (std::size_t i = 0; i < count; i += 2) {
            const __m256i both =
                _mm256_unpacklo_epi16(_mm256_set1_epi16(weights[i]), _mm256_set1_epi16(weights[i + 1]));
            const __m256i first = Load(narrowed[i] + at), second = Load(narrowed[i + 1] + at);
            low = _mm256_add_epi32(low, _mm256_madd_epi16(_mm256_unpacklo_epi16(first, second), both));
            high = _mm256_add_epi32(high, _mm256_madd_epi16(_mm256_unpackhi_epi16(first, second), both));
        }
        constexpr int Bits = WeightBits + BetweenBits;
        const __m256i words = _mm256_packs_epi32(Rounded<Bits>(low), Rounded<Bits>(high));
        const __m128i bytes = _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(row + at), CutToAlpha(bytes));
    }
}

} // namespace

const ResampleForms ResampleAvx2{NarrowRowsAvx2, SumRowsAvx2};

} // namespace imaginglibrary

#pragma GCC pop_options

#endif
