// Part of a picture.
#pragma once

#include "imaginglibrary/core/geometry.h"
#include "imaginglibrary/core/picture.h"

#include <memory>

namespace imaginglibrary {

// The pixels of `area`, which must lie within the picture and not be empty, in the picture's own format. Rows are taken
// from the picture as they are read; it and its readers keep `picture` alive.
std::shared_ptr<const PixelSource> CroppedTo(std::shared_ptr<const PixelSource> picture, const PixelRect& area);

} // namespace imaginglibrary
