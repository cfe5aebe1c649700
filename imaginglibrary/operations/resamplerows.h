// The sums that resampled pictures are made of, row by row.
#pragma once

#include "imaginglibrary/operations/resamplekernel.h"

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

inline constexpr std::size_t ResampledChannels = 4;

// Rows between the two passes, and new ones, have room for a number of pixels that this divides.
inline constexpr std::size_t ResamplePixelStep = 4;

// Two old rows of four bytes a pixel made as wide as the new ones, with BetweenBits behind the point. The old rows have
// room for as many pixels behind their last one as the kernel has taps.
void NarrowRows(const std::uint8_t* const (&rows)[2], const ResampleKernel& kernel, std::int16_t* const (&narrowed)[2]);

// `pixels` premultiplied new pixels, a multiple of ResamplePixelStep: the weighted sum of an even number of narrowed
// rows. Kernels may overshoot: what leaves the range is cut off, and no colour exceeds its alpha.
void SumRows(const std::int16_t* const* narrowed, const std::int16_t* weights, std::size_t count, std::uint8_t* row,
             std::size_t pixels);

// Their forms, which all give the same bits; the two above take the quickest that the processor has.
struct ResampleForms {
    decltype(&NarrowRows) narrowRows;
    decltype(&SumRows) sumRows;
};
extern const ResampleForms ResampleScalar;
#if defined(__SSE2__)
extern const ResampleForms ResampleSse2;
extern const ResampleForms ResampleAvx2;
#endif

} // namespace imaginglibrary
