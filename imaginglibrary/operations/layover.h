// Lays a picture over a colour.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <memory>

namespace imaginglibrary {

// The picture over `color`, which counts as opaque: no pixel is translucent then. One that cannot be translucent is
// given back as it is. A palette stays one, of blended colours; what carries alpha in its pixels becomes Rgb24, every
// channel source * alpha + color * (1 - alpha), rounded once. Rows are taken from the picture as they are read; the
// result and its readers keep `picture` alive.
std::shared_ptr<const PixelSource> LaidOver(std::shared_ptr<const PixelSource> picture, Color color);

} // namespace imaginglibrary
