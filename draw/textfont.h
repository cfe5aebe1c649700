// The font and the slant of text on the canvas, and what the window for entering text does with them.
#pragma once

#include "draw/fillstyle.h"
#include "toolkit/fontresult.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumbrix {

// There is one, kept for as long as the program runs.
struct TextFont {
    std::string lastEnteredText; // what the box shows when the window opens
    std::string name;            // empty until a font has been chosen
    std::int32_t points = 0;
    std::int32_t style = 0; // bits: FontBold and on
    FillValue color = 0;    // nothing is drawn in it
    std::int32_t charset = 0;
    std::int32_t angleTenths = 0; // of a degree

    bool operator==(const TextFont&) const = default;
};

// The angle for its box: digits, with a fraction only where there is one.
std::string AngleText(std::int32_t angleTenths);

// The angle in a box's text in tenths of a degree, to the nearest; 0 where there is no number.
std::int32_t AngleTenthsOf(const std::string& text);

// Before the dialog for fonts opens: the defaults where no font has been chosen, and the angle, which is read only now.
void BeginFontChange(TextFont& font, FillValue fillColor, const std::string& angleText);

// What the dialog for fonts opens on.
FontPreset PresetOf(const TextFont& font);

// Takes what was chosen. Where the dialog was cancelled, everything that it gives is empty or 0.
void StoreChosenFont(TextFont& font, const std::optional<FontResult>& chosen);

// The font to make: the height is FontHeight of the points, the slant is the escapement.
struct SlantedFont {
    std::string face;
    std::int32_t points = 0;
    std::int32_t weight = RegularWeight;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruckOut = false;
    std::int32_t charset = 0;
    std::int32_t pitch = 0;
    std::int32_t escapement = 0; // tenths of a degree

    bool operator==(const SlantedFont&) const = default;
};

SlantedFont SlantedFontOf(const TextFont& font);

} // namespace lumbrix
