// The sums that resampled pictures are made of, row by row: the plain form.
#include "imaginglibrary/operations/resamplerows.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

// `bits` fewer behind the point.
constexpr std::int32_t Rounded(std::int32_t sum, int bits) { return (sum + (1 << (bits - 1))) >> bits; }

void NarrowRow(const std::uint8_t* row, const ResampleKernel& kernel, std::int16_t* narrowed) {
    for (std::size_t i = 0; i < kernel.Count(); ++i) {
        const std::uint8_t* from = row + ResampledChannels * kernel.First(i);
        const std::int16_t* weights = kernel.Weights(i);
        std::int32_t sums[ResampledChannels] = {};
        for (std::size_t tap = 0; tap < kernel.Taps(); ++tap) {
            for (std::size_t channel = 0; channel < ResampledChannels; ++channel) {
                sums[channel] += weights[tap] * from[tap * ResampledChannels + channel];
            }
        }
        for (const std::int32_t sum : sums) {
            *narrowed++ = static_cast<std::int16_t>(
                std::clamp(Rounded(sum, WeightBits - BetweenBits), std::int32_t{INT16_MIN}, std::int32_t{INT16_MAX}));
        }
    }
}

void NarrowRowsScalar(const std::uint8_t* const (&rows)[2], const ResampleKernel& kernel,
                      std::int16_t* const (&narrowed)[2]) {
    NarrowRow(rows[0], kernel, narrowed[0]);
    NarrowRow(rows[1], kernel, narrowed[1]);
}

void SumRowsScalar(const std::int16_t* const* narrowed, const std::int16_t* weights, std::size_t count,
                   std::uint8_t* row, std::size_t pixels) {
    for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
        int most = 255;
        for (std::size_t channel = ResampledChannels; channel-- > 0;) {
            const std::size_t at = pixel * ResampledChannels + channel;
            std::int32_t sum = 0;
            for (std::size_t i = 0; i < count; ++i) {
                sum += weights[i] * narrowed[i][at];
            }
            row[at] = static_cast<std::uint8_t>(std::clamp(Rounded(sum, WeightBits + BetweenBits), 0, most));
            if (channel == ResampledChannels - 1) {
                most = row[at];
            }
        }
    }
}

const ResampleForms& QuickestForms() {
#if defined(__SSE2__)
    static const ResampleForms& quickest = __builtin_cpu_supports("avx2") ? ResampleAvx2 : ResampleSse2;
    return quickest;
#else
    return ResampleScalar;
#endif
}

} // namespace

const ResampleForms ResampleScalar{NarrowRowsScalar, SumRowsScalar};

void NarrowRows(const std::uint8_t* const (&rows)[2], const ResampleKernel& kernel,
                std::int16_t* const (&narrowed)[2]) {
    QuickestForms().narrowRows(rows, kernel, narrowed);
}

void SumRows(const std::int16_t* const* narrowed, const std::int16_t* weights, std::size_t count, std::uint8_t* row,
             std::size_t pixels) {
    QuickestForms().sumRows(narrowed, weights, count, row, pixels);
}

} // namespace imaginglibrary
