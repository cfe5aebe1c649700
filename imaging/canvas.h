// A picture that stays loaded and is drawn again and again through three points.
#pragma once

#include "base/geometry.h"
#include "imaging/gdiplus/flattypes.h"

#include <string>

namespace lumbrix {

// Puts the image of a file in the place of `image`, which stays as it is where the file cannot be loaded; the one
// before is not disposed of. Gives back the size of the image that stands there then; 0 by 0 for none.
PixelSize LoadCanvasImage(const std::string& name, ImageHandle* image);

// Draws the image on a device context, by cubic convolution and with smooth borders. No status is looked at.
void DrawCanvasImage(ImageHandle image, const CornerPoints& corners, DeviceContextHandle context);

} // namespace lumbrix
