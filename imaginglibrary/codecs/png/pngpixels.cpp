// From the samples of PNG files to the pixels that the platform shows such a picture in.
//
// The simple loops become vector code; this file is compiled with that asked for.
#include "imaginglibrary/codecs/png/pngpixels.h"

#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/packing.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include <png.h>

namespace imaginglibrary {

namespace {

constexpr Color OpaqueBlack = MakeColor(0, 0, 0);

unsigned ChannelsOf(int colorType) {
    const bool isOne = (colorType & PNG_COLOR_MASK_PALETTE) != 0 || (colorType & PNG_COLOR_MASK_COLOR) == 0;
    return (isOne ? 1 : 3) + ((colorType & PNG_COLOR_MASK_ALPHA) != 0 ? 1 : 0);
}

template <class Sample> Sample SampleAt(const std::uint8_t* from, std::size_t number) {
    if constexpr (sizeof(Sample) == 2) {
        return BigEndian16(from + 2 * number);
    } else {
        return from[number];
    }
}

// To the nearest value of eight bits.
template <class Sample> std::uint8_t ToByte(Sample sample) {
    if constexpr (sizeof(Sample) == 2) {
        return static_cast<std::uint8_t>((sample * 255u + 32767) / 65535);
    } else {
        return sample;
    }
}

} // namespace

PngPixels::PngPixels(PngLayout layout) : layout_(std::move(layout)), convert_(ConversionOf()) {
    if (convert_ == LookUp) {
        MakeColors();
    }
}

PngRowForm PngPixels::RowForm() const {
    const std::size_t bits = std::size_t{ChannelsOf(layout_.colorType)} * static_cast<unsigned>(layout_.depth);
    return {.rowBytes = (layout_.width * bits + 7) / 8, .pixelBytes = std::max<std::size_t>(bits / 8, 1)};
}

void PngPixels::Keep(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to) {
    const std::size_t bits = std::size_t{pixels.layout_.width} * static_cast<unsigned>(pixels.layout_.depth);
    std::copy_n(from, (bits + 7) / 8, to);
    if (const unsigned last = bits % 8; last != 0) {
        to[bits / 8] &= static_cast<std::uint8_t>(0xFF << (8 - last)); // what is behind the last pixel means nothing
    }
}

void PngPixels::SwapThree(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to) {
    const std::size_t bytes = 3 * std::size_t{pixels.layout_.width};
    for (std::size_t i = 0; i < bytes; i += 3) {
        to[i] = from[i + 2];
        to[i + 1] = from[i + 1];
        to[i + 2] = from[i];
    }
}

void PngPixels::SwapFour(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to) {
    const std::size_t bytes = 4 * std::size_t{pixels.layout_.width};
    for (std::size_t i = 0; i < bytes; i += 4) {
        const std::uint32_t pixel = LittleEndian32(from + i);
        PutLittleEndian32(to + i, (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16);
    }
}

void PngPixels::LookUp(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to) {
    const auto depth = static_cast<unsigned>(pixels.layout_.depth);
    for (std::size_t x = 0; x < pixels.layout_.width; ++x) {
        PutLittleEndian32(to + 4 * x, pixels.colors_[depth == 8 ? from[x] : PackedAt(from, x, depth)]);
    }
}

template <class Sample, std::size_t Channels>
void PngPixels::Narrow(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to) {
    constexpr bool HasAlphas = Channels % 2 == 0;
    constexpr std::size_t Colors = Channels - (HasAlphas ? 1 : 0);
    const auto& clear = pixels.layout_.clear;
    for (std::size_t x = 0; x < pixels.layout_.width; ++x) {
        std::array<Sample, Channels> samples;
        bool isClear = clear.has_value();
        for (std::size_t i = 0; i < Channels; ++i) {
            samples[i] = SampleAt<Sample>(from, x * Channels + i);
        }
        for (std::size_t i = 0; i < Colors; ++i) {
            isClear = isClear && samples[i] == static_cast<Sample>((*clear)[i]);
        }
        to[4 * x] = ToByte(samples[Colors - 1]);
        to[4 * x + 1] = ToByte(samples[Colors / 2]);
        to[4 * x + 2] = ToByte(samples[0]);
        to[4 * x + 3] = isClear ? 0 : HasAlphas ? ToByte(samples[Channels - 1]) : 255;
    }
}

PngPixels::Conversion PngPixels::ConversionOf() const {
    if (IsIndexed(layout_.format)) {
        return Keep;
    }
    const bool isDeep = layout_.depth == 16;
    switch (ChannelsOf(layout_.colorType)) {
    case 1:
        return isDeep ? Narrow<std::uint16_t, 1> : LookUp;
    case 2:
        return isDeep ? Narrow<std::uint16_t, 2> : Narrow<std::uint8_t, 2>;
    case 3:
        return layout_.format == PixelFormat::Rgb24 ? SwapThree
               : isDeep                             ? Narrow<std::uint16_t, 3>
                                                    : Narrow<std::uint8_t, 3>;
    default:
        return isDeep ? Narrow<std::uint16_t, 4> : SwapFour;
    }
}

void PngPixels::MakeColors() {
    const bool isGrey = layout_.colorType == PNG_COLOR_TYPE_GRAY;
    const unsigned greatest = (1u << layout_.depth) - 1;
    for (unsigned sample = 0; sample <= greatest; ++sample) {
        if (isGrey) {
            const auto level = static_cast<std::uint8_t>(sample * 255 / greatest);
            const bool isClear = layout_.clear && sample == ((*layout_.clear)[0] & greatest);
            colors_[sample] = MakeColor(level, level, level, isClear ? 0 : 255);
        } else {
            colors_[sample] = sample < layout_.palette.size() ? layout_.palette[sample] : OpaqueBlack;
        }
    }
}

} // namespace imaginglibrary
