// Replaces a colour of a picture by masks and raster operations, without a loop over its pixels.
#pragma once

#include "base/geometry.h"
#include "toolkit/messages.h"

#include <windows.h>

namespace lumbrix {

// A rectangle of a picture.
struct PictureRegion {
    HDC context;
    PixelPoint place; // its top left corner
    PixelSize size;
};

struct ColorChange {
    COLORREF from;
    COLORREF to;
};

// Copies the region to the same place of the target, with one colour in the place of another. False on failure, with a
// message only where the picture for the new colour cannot be made; the target is then as it was.
bool ChangePixels(const PictureRegion& source, ColorChange change, HDC target, Messages& messages);

// Copies the region to the same place of the target. Where it has the key colour, the background is taken instead,
// whose own top left corner meets the region's. False on failure.
bool BlendOverColor(const PictureRegion& source, COLORREF keyColor, HDC background, HDC target);

// Draws on a mask, at its top left corner, ones where the region has exactly the key colour and zeros elsewhere. False
// on failure.
bool MakeColorMask(const PictureRegion& source, HDC mask, COLORREF keyColor);

} // namespace lumbrix
