// Reads a picture along a line, between its pixels, by separable filters of four pixels a side.
#pragma once

#include "imaginglibrary/operations/pyramidlevel.h"
#include "imaginglibrary/operations/resample.h"

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// The weights of four neighbouring pixels for every place between the two in the middle, laid out as the vector code
// reads them.
struct SampleKernel {
    static constexpr unsigned PhaseBits = 7; // places are told apart to 1/128 of a pixel
    static constexpr unsigned Phases = 1u << PhaseBits;
    // What the weights of a place add up to. As many parts as fit: four rows' weighted sum is a 16-bit number.
    static constexpr int OneDown = 112;
    // Such that a sum times the weights, cut to its upper 16 bits, has five bits behind the point.
    static constexpr int OneAcross = ((32 << 16) + OneDown / 2) / OneDown;

    explicit SampleKernel(Resampling resampling);

    // Eight times the weights of the upper two rows in turns, and of the lower two.
    alignas(16) std::int8_t vertical[Phases][2][16];
    // Four times the weight of the first pixel and four times that of the second; and of the other two.
    alignas(16) std::int16_t horizontal[Phases][2][8];
};

// The one for a way of resampling; made once.
const SampleKernel& KernelOf(Resampling resampling);

// Places in units of 2^-16 pixels, and the way from one sample to the next. A place names the first of the four pixels
// and rows that it lies between, counted from the corner of the level's padding; its fraction is how far it lies from
// the second towards the third.
struct SampleWay {
    static constexpr unsigned UnitBits = 16;
    static constexpr double Unit = 1u << UnitBits;

    std::uint32_t x = 0;
    std::uint32_t y = 0;
    std::int32_t stepX = 0;
    std::int32_t stepY = 0;
    // How many bytes from a sample's pixels those lie that will be asked for soon, or so; a hint, which changes
    // nothing.
    std::uintptr_t ahead = 0;

    static constexpr std::size_t WholeOf(std::uint32_t place) { return place >> UnitBits; }
    static constexpr std::size_t PhaseOf(std::uint32_t place) {
        return (place >> (UnitBits - SampleKernel::PhaseBits)) % SampleKernel::Phases;
    }

    // The first of the pixels around the first sample.
    const std::uint8_t* First(const std::uint8_t* padded, std::size_t rowBytes) const {
        return padded + WholeOf(y) * rowBytes + WholeOf(x) * 4;
    }

    void Advance(std::uint32_t steps = 1) {
        x += static_cast<std::uint32_t>(stepX) * steps;
        y += static_cast<std::uint32_t>(stepY) * steps;
    }

    // Whether `count` samples all have their pixels within the level and its padding.
    bool LiesWithin(const PyramidLevel& level, std::size_t count) const;
};

// Writes `count` premultiplied pixels, the samples along a way that lies within the level. Colours may exceed alpha
// where the filter overshoots. What is the same everywhere comes out as it is, and so does every pixel at fraction 0.
void SampleLine(const PyramidLevel& level, const SampleKernel& kernel, const SampleWay& way, std::uint8_t* pixels,
                std::size_t count);

// Its forms, which all give the same bits; SampleLine takes the quickest one that the processor has.
void SampleLineScalar(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                      std::size_t count);
#if defined(__SSE2__)
void SampleLineSse2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count);
void SampleLineAvx2(const PyramidLevel& level, const SampleKernel& kernel, SampleWay way, std::uint8_t* pixels,
                    std::size_t count);
#endif

} // namespace imaginglibrary
