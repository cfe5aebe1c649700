// What each new row or column of a resampled picture is made of.
#pragma once

#include "imaginglibrary/operations/resample.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaginglibrary {

// One in the whole numbers that weights are given in. What lies between two passes has 6 bits behind the point, so that
// a weighted sum of such numbers fits into 32 bits.
inline constexpr int WeightBits = 14;
inline constexpr int OneWeight = 1 << WeightBits;
inline constexpr int BetweenBits = 6;

// Of which old samples every new one along one side consists. All have the same number of taps, a multiple of
// `TapStep`; those behind the last one wanted weigh nothing, and may lie beyond the end of the side.
class ResampleKernel {
  public:
    static constexpr std::size_t TapStep = 4;

    // `extent` is how many old samples the picture fills; where it is no whole number the last one lies partly outside,
    // and counts if at least half of it lies within. Shrinking is by a Lanczos kernel of three lobes widened by the
    // factor, enlarging as `resampling` says. The weights of each new sample add up to OneWeight exactly.
    ResampleKernel(double extent, std::uint32_t target, Resampling resampling);

    std::size_t Count() const { return firsts_.size(); }
    std::size_t Taps() const { return taps_; }

    // The old sample that the first tap of a new one stands for.
    std::uint32_t First(std::size_t i) const { return firsts_[i]; }

    // Behind the last old sample that weighs something.
    std::uint32_t End(std::size_t i) const { return ends_[i]; }

    const std::int16_t* Weights(std::size_t i) const { return weights_.data() + i * taps_; }

  private:
    std::size_t taps_ = 0;
    std::vector<std::uint32_t> firsts_;
    std::vector<std::uint32_t> ends_;
    std::vector<std::int16_t> weights_;
};

} // namespace imaginglibrary
