// The colours that the paint window offers.
#pragma once

#include "toolkit/layout.h"

#include <array>
#include <cstdint>

namespace lumbrix {

inline constexpr std::int32_t PaletteColors = 32;

// The colour with this number; black for a number that none has. Some greys are a little off, and stay so.
constexpr WindowColor PaletteColor(std::int32_t index) {
    constexpr std::array<WindowColor, PaletteColors> Colors{
        ColorOf(0, 0, 0),       ColorOf(128, 0, 0),     ColorOf(0, 128, 0),     ColorOf(128, 128, 0),
        ColorOf(0, 0, 196),     ColorOf(128, 0, 128),   ColorOf(0, 64, 128),    ColorOf(196, 193, 196),
        ColorOf(128, 128, 128), ColorOf(255, 0, 0),     ColorOf(0, 255, 0),     ColorOf(255, 255, 0),
        ColorOf(0, 0, 255),     ColorOf(255, 0, 255),   ColorOf(0, 255, 255),   ColorOf(255, 255, 255),
        ColorOf(164, 164, 164), ColorOf(255, 160, 128), ColorOf(160, 255, 160), ColorOf(255, 255, 160),
        ColorOf(160, 160, 255), ColorOf(255, 160, 255), ColorOf(160, 255, 255), ColorOf(212, 212, 212),
        ColorOf(180, 180, 180), ColorOf(255, 220, 188), ColorOf(220, 255, 220), ColorOf(255, 255, 220),
        ColorOf(220, 220, 255), ColorOf(255, 220, 255), ColorOf(220, 255, 255), ColorOf(228, 228, 228),
    };
    return index >= 0 && index < PaletteColors ? Colors[static_cast<std::size_t>(index)] : Black;
}

} // namespace lumbrix
