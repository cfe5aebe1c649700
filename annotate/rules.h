// How screen and picture correspond in the annotate and crop window, and what its texts and choices mean.
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// How many pixels of a picture one pixel of the screen stands for, so that the whole picture fits: the larger of the
// two quotients, never below 1.
float PreviewScaleFor(PixelSize picture, PixelSize screen);

// The picture at that scale, rounded to the nearest whole numbers, ties to even.
PixelSize PreviewSize(PixelSize picture, float scale);

// Where a place on the screen is in the full-size picture.
FloatPoint FullSizePoint(PixelPoint onScreen, float scale);

// The size of text in the full-size picture, rounded to the nearest, ties to even.
std::int32_t FullSizeText(std::int32_t onScreen, float scale);

// A text whose second character is a colon is the path of a stamp; everything else is text to write.
bool IsStampPath(const std::string& text);

// The rectangle between two places on the screen, in pixels of the full-size picture, rounded to the nearest, ties to
// even. The corners are taken as they come, so a rectangle that was drawn upwards has its bottom above its top.
PixelRectangle RectangleBetween(PixelPoint first, PixelPoint second, float scale);

// Whether anything lies between the edges; one that was drawn upwards or leftwards has something.
bool HasArea(const PixelRectangle& rectangle);

// The family that a font dialog gave; "Arial" where it gave none.
std::string FontNameOrDefault(const std::string& name);

// Whether text of this weight is written bold; 400 is regular, 700 bold.
bool IsBoldWeight(std::int32_t weight);

// The components of a colour value of Windows, red in the lowest byte.
void SplitColor(std::uint32_t color, std::int32_t* red, std::int32_t* green, std::int32_t* blue);

} // namespace lumbrix
