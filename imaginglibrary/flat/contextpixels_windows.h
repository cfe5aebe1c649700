// The pixels of a device context, where they lie in memory.
#pragma once

#include "imaginglibrary/operations/blend.h"

#include <optional>

#include <windows.h>

namespace imaginglibrary {

// What `area` of a context (in its own units, within its clip box) consists of, to be drawn on in place: only of a
// memory context whose bitmap is a section of 32 bits a pixel, whose units are its pixels, and whose clipping is a
// rectangle. Nothing for any other. Good for as long as the bitmap stays selected.
std::optional<Canvas> PixelsInPlace(HDC context, const PixelRect& area);

} // namespace imaginglibrary
