// The font and the slant of text on the canvas, and what the window for entering text does with them.
#include "draw/textfont.h"

#include "base/numbers.h"

#include <cstdlib>

namespace lumbrix {

namespace {

constexpr const char* DefaultFace = "Microsoft Sans Serif";
constexpr std::int32_t DefaultPoints = 10;
constexpr std::int32_t Tenths = 10;

} // namespace

std::string AngleText(std::int32_t angleTenths) {
    const std::int64_t tenths = std::llabs(angleTenths);
    std::string text = (angleTenths < 0 ? "-" : "") + std::to_string(tenths / Tenths);
    if (tenths % Tenths != 0) {
        text += "." + std::to_string(tenths % Tenths);
    }
    return text;
}

std::int32_t AngleTenthsOf(const std::string& text) { return RoundToEven(LeadingNumber(text) * Tenths); }

void BeginFontChange(TextFont& font, FillValue fillColor, const std::string& angleText) {
    if (font.name.empty()) {
        font.name = DefaultFace;
        font.points = DefaultPoints;
        font.style = 0;
        font.color = fillColor;
    }
    font.angleTenths = AngleTenthsOf(angleText);
}

FontPreset PresetOf(const TextFont& font) { return {font.name, font.points, font.style}; }

void StoreChosenFont(TextFont& font, const std::optional<FontResult>& chosen) {
    const FontResult result = chosen.value_or(FontResult());
    font.name = result.face;
    font.points = RoundToEven(result.tenthsOfPoints / double{Tenths});
    font.style = StyleOf(result);
    font.color = FillValueOf(result.color);
    font.charset = result.charset;
}

SlantedFont SlantedFontOf(const TextFont& font) {
    return {.face = font.name,
            .points = font.points,
            .weight = WeightOfStyle(font.style),
            .isItalic = (font.style & FontItalic) != 0,
            .isUnderlined = (font.style & FontUnderline) != 0,
            .isStruckOut = (font.style & FontStrikeout) != 0,
            .charset = font.charset,
            .escapement = font.angleTenths};
}

} // namespace lumbrix
