// Draws a picture, or a part of it, through an affine map.
#pragma once

#include "imaginglibrary/operations/blend.h"
#include "imaginglibrary/operations/resample.h"

#include <memory>

namespace imaginglibrary {

// What to draw where.
struct PictureDrawing {
    std::shared_ptr<const PixelSource> picture;
    PixelRect part;   // in pixels of the picture; what of it lies outside the picture draws nothing
    Affine toSurface; // from the picture's pixels, whose first one covers 0 to 1, to those of the surface
    Resampling resampling = Resampling::Smooth;
};

// The pixels of the surface that the drawing may touch.
PixelRect DrawnArea(const PictureDrawing& drawing);

// Where the picture's pixels fall on those of the surface one by one, they are laid over it as they are. Otherwise it
// is resampled: every pixel of the surface gets the average of what falls on it, and at slanted borders as much of it
// as the picture covers. Borders on whole pixels stay sharp, and nothing is shifted.
Status DrawPicture(Canvas& canvas, const PictureDrawing& drawing);

} // namespace imaginglibrary
