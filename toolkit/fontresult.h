// What a user chooses in the dialog for fonts, and what it opens on.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix {

// Styles as bits.
inline constexpr std::int32_t FontBold = 1;
inline constexpr std::int32_t FontItalic = 2;
inline constexpr std::int32_t FontUnderline = 4;
inline constexpr std::int32_t FontStrikeout = 8;

inline constexpr std::int32_t RegularWeight = 400;
inline constexpr std::int32_t BoldWeight = 700;

// What the dialog opens on.
struct FontPreset {
    std::string face;
    std::int32_t points = 0;
    std::int32_t style = 0; // bits
};

// Which fonts it offers.
enum class FontKinds {
    All,
    Scalable,
};

struct FontResult {
    std::string face;
    std::int32_t height = 0; // in pixels, as the platform has it: below 0 for that of the characters alone
    std::int32_t tenthsOfPoints = 0;
    std::int32_t weight = 0;
    std::uint8_t italic = 0; // not 0 where it is
    std::uint8_t underline = 0;
    std::uint8_t strikeout = 0;
    std::uint8_t charset = 0;
    std::uint32_t color = 0; // as the platform packs it
};

constexpr std::int32_t WeightOfStyle(std::int32_t style) {
    return (style & FontBold) != 0 ? BoldWeight : RegularWeight;
}

inline std::int32_t StyleOf(const FontResult& result) {
    return (result.weight >= BoldWeight ? FontBold : 0) | (result.italic != 0 ? FontItalic : 0) |
           (result.underline != 0 ? FontUnderline : 0) | (result.strikeout != 0 ? FontStrikeout : 0);
}

} // namespace lumbrix
