// Reads a picture along a line, between its pixels: the filters, and the plain form.
#include "imaginglibrary/operations/sampleline.h"

#include <algorithm>
#include <cmath>

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

// One of four rows' part of a value, with six bits behind the point.
int VerticalPart(std::uint8_t value, std::uint16_t weight) { return static_cast<int>((value * 256u * weight) >> 16); }

std::uint8_t SampledChannel(const std::uint8_t* const* rows, std::size_t channel, const std::uint16_t (&vertical)[4][8],
                            const std::int16_t (&horizontal)[4][4]) {
    int sum = 0; // with four bits behind the point
    for (std::size_t column = 0; column < 4; ++column) {
        const std::size_t at = column * 4 + channel;
        const int value = VerticalPart(rows[1][at], vertical[1][0]) + VerticalPart(rows[2][at], vertical[2][0]) -
                          VerticalPart(rows[0][at], vertical[0][0]) - VerticalPart(rows[3][at], vertical[3][0]);
        sum += (value * horizontal[column][0]) >> 16;
    }
    constexpr int Half = 8;
    constexpr int CutOff = 2; // what the shifts above take away on average
    return static_cast<std::uint8_t>(std::clamp((sum + Half + CutOff) >> 4, 0, 255));
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
        int weights[4];
        for (int tap = 0; tap < 4; ++tap) {
            weights[tap] =
                static_cast<int>(std::lround(One * WeightAt(resampling, tap, static_cast<double>(phase) / Phases)));
        }
        weights[phase < Phases / 2 ? 1 : 2] += One - weights[0] - weights[1] - weights[2] - weights[3];
        for (int tap = 0; tap < 4; ++tap) {
            std::fill_n(vertical[phase][tap], 8, static_cast<std::uint16_t>(std::abs(weights[tap])));
            std::fill_n(horizontal[phase][tap], 4, static_cast<std::int16_t>(weights[tap]));
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
