// The sums that resampled pictures are made of, row by row: the form for processors with SSE2.
#include "imaginglibrary/operations/resamplerows.h"

#if defined(__SSE2__)

#include <emmintrin.h>

namespace imaginglibrary {

namespace {

template <int Bits> inline __m128i Rounded(__m128i sums) {
    return _mm_srai_epi32(_mm_add_epi32(sums, _mm_set1_epi32(1 << (Bits - 1))), Bits);
}

inline __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

// The weighted sum of all taps, a channel in 32 bits.
inline __m128i SumOfTaps(const std::uint8_t* from, const std::int16_t* weights, std::size_t taps) {
    const __m128i zero = _mm_setzero_si128();
    __m128i even = zero, odd = zero;
    for (std::size_t tap = 0; tap < taps; tap += 4) {
        // Pixels 0 and 2, 1 and 3 side by side, and then their channels in turns.
        const __m128i pixels = _mm_shuffle_epi32(Load(from + tap * 4), _MM_SHUFFLE(3, 1, 2, 0));
        const __m128i pairs = _mm_unpacklo_epi8(pixels, _mm_unpackhi_epi64(pixels, pixels));
        const __m128i four = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(weights + tap));
        even = _mm_add_epi32(even, _mm_madd_epi16(_mm_unpacklo_epi8(pairs, zero), _mm_shuffle_epi32(four, 0x00)));
        odd = _mm_add_epi32(odd, _mm_madd_epi16(_mm_unpackhi_epi8(pairs, zero), _mm_shuffle_epi32(four, 0x55)));
    }
    return _mm_add_epi32(even, odd);
}

void NarrowRow(const std::uint8_t* row, const ResampleKernel& kernel, std::int16_t* narrowed) {
    for (std::size_t i = 0; i < kernel.Count(); ++i, narrowed += ResampledChannels) {
        const __m128i sums = SumOfTaps(row + ResampledChannels * kernel.First(i), kernel.Weights(i), kernel.Taps());
        const __m128i rounded = Rounded<WeightBits - BetweenBits>(sums);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(narrowed), _mm_packs_epi32(rounded, rounded));
    }
}

void NarrowRowsSse2(const std::uint8_t* const (&rows)[2], const ResampleKernel& kernel,
                    std::int16_t* const (&narrowed)[2]) {
    NarrowRow(rows[0], kernel, narrowed[0]);
    NarrowRow(rows[1], kernel, narrowed[1]);
}

// No channel above the fourth one of its pixel.
inline __m128i CutToAlpha(__m128i pixels) {
    __m128i alphas = _mm_srli_epi32(pixels, 24);
    alphas = _mm_or_si128(alphas, _mm_slli_epi32(alphas, 8));
    alphas = _mm_or_si128(alphas, _mm_slli_epi32(alphas, 16));
    return _mm_min_epu8(pixels, alphas);
}

void SumRowsSse2(const std::int16_t* const* narrowed, const std::int16_t* weights, std::size_t count, std::uint8_t* row,
                 std::size_t pixels) {
    for (std::size_t at = 0; at < pixels * ResampledChannels; at += 16) {
        __m128i sums[4] = {};
        for (std::size_t i = 0; i < count; i += 2) {
            const __m128i both = _mm_unpacklo_epi16(_mm_set1_epi16(weights[i]), _mm_set1_epi16(weights[i + 1]));
            for (std::size_t half = 0; half < 2; ++half) {
                const __m128i first = Load(narrowed[i] + at + half * 8), second = Load(narrowed[i + 1] + at + half * 8);
                sums[half * 2] = _mm_add_epi32(sums[half * 2], _mm_madd_epi16(_mm_unpacklo_epi16(first, second), both));
                sums[half * 2 + 1] =
                    _mm_add_epi32(sums[half * 2 + 1], _mm_madd_epi16(_mm_unpackhi_epi16(first, second), both));
            }
        }
        constexpr int Bits = WeightBits + BetweenBits;
        const __m128i left = _mm_packs_epi32(Rounded<Bits>(sums[0]), Rounded<Bits>(sums[1]));
        const __m128i right = _mm_packs_epi32(Rounded<Bits>(sums[2]), Rounded<Bits>(sums[3]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(row + at), CutToAlpha(_mm_packus_epi16(left, right)));
    }
}

} // namespace

const ResampleForms ResampleSse2{NarrowRowsSse2, SumRowsSse2};

} // namespace imaginglibrary

#endif
