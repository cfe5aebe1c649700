// Reads a picture along a line, between its pixels: the filters, and the plain form.
#include "imaginglibrary/operations/sampleline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace imaginglibrary {

namespace {

double WeightAt(Resampling resampling, int tap, double fraction) {
    const double distance = std::abs(tap - 1 - fraction);
    switch (resampling) {
    case Resampling::Smooth:
        return KeysCubic(distance);
    case Resampling::Linear:
        return std::max(0.0, 1 - distance);
    default:
        return tap == (fraction < 0.5 ? 1 : 2) ? 1 : 0;
    }
}

std::uint8_t SampledChannel(const std::uint8_t* const* rows, std::size_t channel, const std::int8_t (&vertical)[2][16],
                            const std::int16_t (&horizontal)[2][8]) {
    int sum = 0; // with five bits behind the point
    for (std::size_t column = 0; column < 4; ++column) {
        const std::size_t at = column * 4 + channel;
        const int value = rows[0][at] * vertical[0][0] + rows[1][at] * vertical[0][1] + rows[2][at] * vertical[1][0] +
                          rows[3][at] * vertical[1][1];
        sum += (value * horizontal[column / 2][column % 2 * 4]) >> 16;
    }
    constexpr int Half = 16;
    constexpr int CutOff = 2; // what the shifts above take away on average
    return static_cast<std::uint8_t>(std::clamp((sum + Half + CutOff) >> 5, 0, 255));
}

// The weights of a place in whole parts of `one`. What rounding leaves over goes to the weight that it serves best.
std::array<int, 4> WholeWeights(Resampling resampling, double fraction, int one) {
    std::array<int, 4> weights;
    std::array<double, 4> missing;
    for (std::size_t tap = 0; tap < 4; ++tap) {
        const double exact = one * WeightAt(resampling, static_cast<int>(tap), fraction);
        weights[tap] = static_cast<int>(std::floor(exact));
        missing[tap] = exact - weights[tap];
    }
    for (int left = one - std::accumulate(weights.begin(), weights.end(), 0); left > 0; --left) {
        const auto most = std::max_element(missing.begin(), missing.end());
        *most -= 1;
        ++weights[static_cast<std::size_t>(most - missing.begin())];
    }
    return weights;
}

using Form = decltype(&SampleLineScalar);

Form QuickestForm() {
#if defined(__SSE2__)
    return __builtin_cpu_supports("avx2") ? SampleLineAvx2 : SampleLineSse2;
#else
    return SampleLineScalar;
#endif
}

} // namespace

SampleKernel::SampleKernel(Resampling resampling) {
    for (unsigned phase = 0; phase < Phases; ++phase) {
        const double fraction = static_cast<double>(phase) / Phases;
        const auto down = WholeWeights(resampling, fraction, OneDown);
        const auto across = WholeWeights(resampling, fraction, OneAcross);
        for (std::size_t i = 0; i < 32; ++i) {
            vertical[phase][i / 16][i % 16] = static_cast<std::int8_t>(down[i / 16 * 2 + i % 2]);
        }
        for (std::size_t i = 0; i < 16; ++i) {
            horizontal[phase][i / 8][i % 8] = static_cast<std::int16_t>(across[i / 4]);
        }
    }
}

const SampleKernel& KernelOf(Resampling resampling) {
    static const SampleKernel smooth(Resampling::Smooth);
    static const SampleKernel linear(Resampling::Linear);
    static const SampleKernel nearest(Resampling::Nearest);
    switch (resampling) {
    case Resampling::Smooth:
        return smooth;
    case Resampling::Linear:
        return linear;
    default:
        return nearest;
    }
}

bool SampleWay::LiesWithin(const PyramidLevel& level, std::size_t count) const {
    const auto isWithin = [](std::int64_t place, std::uint32_t side) {
        return place >= 0 && place >> UnitBits <= std::int64_t{side};
    };
    const auto steps = static_cast<std::int64_t>(count) - 1;
    return isWithin(x, level.Width()) && isWithin(y, level.Height()) &&
           isWithin(x + std::int64_t{stepX} * steps, level.Width()) &&
           isWithin(y + std::int64_t{stepY} * steps, level.Height());
}

void SampleLine(const PyramidLevel& level, const SampleKernel& kernel, const SampleWay& way, std::uint8_t* pixels,
                std::size_t count) {
    static const Form quickest = QuickestForm();
    quickest(level, kernel, way, pixels, count);
}

void SampleLineScalar(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                      std::size_t count) {
    for (; count > 0; --count, pixels += 4, way.Advance()) {
        const std::uint8_t* rows[4];
        rows[0] = way.First(level.Padded(), level.RowBytes());
        for (int row = 1; row < 4; ++row) {
            rows[row] = rows[row - 1] + level.RowBytes();
        }
        const auto& vertical = kernel.vertical[SampleWay::PhaseOf(way.y)];
        const auto& horizontal = kernel.horizontal[SampleWay::PhaseOf(way.x)];
        for (std::size_t channel = 0; channel < 4; ++channel) {
            pixels[channel] = SampledChannel(rows, channel, vertical, horizontal);
        }
    }
}

} // namespace imaginglibrary
