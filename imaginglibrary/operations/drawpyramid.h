// Draws a prepared picture through an affine map.
#pragma once

#include "imaginglibrary/operations/blend.h"
#include "imaginglibrary/operations/picturepyramid.h"
#include "imaginglibrary/operations/resample.h"

namespace imaginglibrary {

// The whole picture; `toSurface` leads from its pixels, whose first one covers 0 to 1, to those of the surface. What it
// shrinks is averaged, in every way of resampling but Nearest. At slanted borders, and where borders lie between
// pixels, a pixel gets as much of the picture as covers it (with Nearest all or nothing); nothing is shifted. A map
// that flattens the picture draws nothing. Shares the rows out over a few threads where there are many.
void DrawPyramid(Canvas& canvas, const PicturePyramid& pyramid, const Affine& toSurface, Resampling resampling);

} // namespace imaginglibrary
