// Lays pixels over a bitmap by their alpha.
#include "imaginglibrary/operations/blend.h"

#include <algorithm>
#include <cstring>

namespace imaginglibrary {

namespace {

constexpr unsigned DivideBy255(unsigned value) { return (value + 127) / 255; }

// One channel of a source with some alpha over one that is opaque.
constexpr unsigned Over(unsigned source, unsigned target, unsigned alpha) {
    return DivideBy255(source * alpha + target * (255 - alpha));
}

// Channels that lie in bytes: Rgb24, Rgb32 and Pargb32, whose colours are stored times their alpha.
template <std::size_t Bytes> void BlendBytes(std::uint8_t* target, const std::uint8_t* source) {
    const unsigned alpha = source[3];
    for (int channel = 0; channel < 3; ++channel) {
        target[channel] = static_cast<std::uint8_t>(Over(source[channel], target[channel], alpha));
    }
    if constexpr (Bytes == 4) {
        target[3] = static_cast<std::uint8_t>(Over(255, target[3], alpha));
    }
}

void BlendArgb(std::uint8_t* target, const std::uint8_t* source) {
    const unsigned alpha = source[3];
    const unsigned below = target[3] * (255 - alpha);
    const unsigned both = alpha * 255 + below; // 255 times the new alpha; above 0, for the source has some
    for (int channel = 0; channel < 3; ++channel) {
        target[channel] =
            static_cast<std::uint8_t>((source[channel] * alpha * 255 + target[channel] * below + both / 2) / both);
    }
    target[3] = static_cast<std::uint8_t>(DivideBy255(both));
}

// Channels of 5 and 6 bits in a 16-bit number; `greenBits` tells Rgb555 from Rgb565.
template <unsigned GreenBits> void BlendPacked(std::uint8_t* target, const std::uint8_t* source) {
    std::uint16_t stored;
    std::memcpy(&stored, target, sizeof stored);
    const unsigned alpha = source[3];
    const auto blend = [&](unsigned channel, unsigned bits, unsigned shift) {
        const unsigned most = (1u << bits) - 1;
        const unsigned wide = (((stored >> shift) & most) * 255 + most / 2) / most;
        return (Over(source[channel], wide, alpha) * most + 127) / 255 << shift;
    };
    stored = static_cast<std::uint16_t>(blend(0, 5, 0) | blend(1, GreenBits, 5) | blend(2, 5, 5 + GreenBits));
    std::memcpy(target, &stored, sizeof stored);
}

void BlendRgb48(std::uint8_t* target, const std::uint8_t* source) {
    constexpr unsigned Widening = 257;
    std::uint16_t stored[3];
    std::memcpy(stored, target, sizeof stored);
    for (int channel = 0; channel < 3; ++channel) {
        stored[channel] = static_cast<std::uint16_t>(Over(source[channel] * Widening, stored[channel], source[3]));
    }
    std::memcpy(target, stored, sizeof stored);
}

// Rgb24, Rgb32 and Pargb32 below a source that is premultiplied.
template <std::size_t Bytes> void BlendPremultiplied(std::uint8_t* target, const std::uint8_t* source) {
    const unsigned alpha = source[3];
    if (alpha == 255) {
        std::memcpy(target, source, Bytes);
        return;
    }
    for (std::size_t channel = 0; channel < Bytes; ++channel) {
        const unsigned color = std::min<unsigned>(source[channel], alpha);
        target[channel] = static_cast<std::uint8_t>(color + DivideBy255(target[channel] * (255 - alpha)));
    }
}

// A premultiplied pixel as one that is not.
void Straighten(const std::uint8_t* premultiplied, std::uint8_t* pixel) {
    const unsigned alpha = premultiplied[3];
    for (int channel = 0; channel < 3; ++channel) {
        const unsigned color = std::min<unsigned>(premultiplied[channel], alpha);
        pixel[channel] = alpha == 0 ? 0 : static_cast<std::uint8_t>((color * 255 + alpha / 2) / alpha);
    }
    pixel[3] = static_cast<std::uint8_t>(alpha);
}

template <std::size_t Bytes, class Blend>
void BlendPixels(std::uint8_t* target, const std::uint8_t* source, std::size_t count, Blend blend) {
    for (; count > 0; --count, target += Bytes, source += 4) {
        if (source[3] != 0) {
            blend(target, source);
        }
    }
}

} // namespace

Canvas::Canvas(Bitmap& bitmap, std::int64_t left, std::int64_t top)
    : Canvas(bitmap.Info().format, bitmap.Row(0), static_cast<std::ptrdiff_t>(bitmap.RowBytes()),
             {left, top, left + std::int64_t{bitmap.Info().width}, top + std::int64_t{bitmap.Info().height}}) {}

bool IsDrawable(PixelFormat format) {
    return !IsIndexed(format) && format != PixelFormat::Argb1555 && format != PixelFormat::Undefined;
}

void BlendRow(const Canvas& canvas, std::int64_t x, std::int64_t y, const std::uint8_t* pixels, std::size_t count) {
    std::uint8_t* target = canvas.PixelAt(x, y);
    switch (canvas.Format()) {
    case PixelFormat::Rgb24:
        return BlendPixels<3>(target, pixels, count, BlendBytes<3>);
    case PixelFormat::Rgb32:
    case PixelFormat::Pargb32:
        return BlendPixels<4>(target, pixels, count, BlendBytes<4>);
    case PixelFormat::Argb32:
        return BlendPixels<4>(target, pixels, count, BlendArgb);
    case PixelFormat::Rgb555:
        return BlendPixels<2>(target, pixels, count, BlendPacked<5>);
    case PixelFormat::Rgb565:
        return BlendPixels<2>(target, pixels, count, BlendPacked<6>);
    case PixelFormat::Rgb48:
        return BlendPixels<6>(target, pixels, count, BlendRgb48);
    default:
        return; // nothing else is drawable
    }
}

void BlendPremultipliedRow(const Canvas& canvas, std::int64_t x, std::int64_t y, const std::uint8_t* pixels,
                           std::size_t count) {
    std::uint8_t* const target = canvas.PixelAt(x, y);
    switch (canvas.Format()) {
    case PixelFormat::Rgb24:
        return BlendPixels<3>(target, pixels, count, BlendPremultiplied<3>);
    case PixelFormat::Rgb32:
    case PixelFormat::Pargb32:
        return BlendPixels<4>(target, pixels, count, BlendPremultiplied<4>);
    default:
        break;
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t pixel[4];
        Straighten(pixels + i * 4, pixel);
        BlendRow(canvas, x + static_cast<std::int64_t>(i), y, pixel, 1);
    }
}

} // namespace imaginglibrary
