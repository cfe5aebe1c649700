// Where the mouse is, as its messages carry it.
#pragma once

#include "base/geometry.h"

#include <cstdint>

namespace lumbrix {

// The two halves as numbers with a sign: left of and above a window they are below 0.
constexpr PixelPoint SignedMousePoint(std::uint32_t packed) {
    return {static_cast<std::int16_t>(packed & 0xFFFF), static_cast<std::int16_t>(packed >> 16)};
}

// The two halves as numbers without a sign: left of and above a window they are beyond 32767.
constexpr PixelPoint UnsignedMousePoint(std::uint32_t packed) {
    return {static_cast<std::int32_t>(packed & 0xFFFF), static_cast<std::int32_t>(packed >> 16)};
}

} // namespace lumbrix
