// Mirrors that take rows as they come.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <memory>

namespace imaginglibrary {

// Left to right. The result and its readers keep `picture` alive.
std::shared_ptr<const PixelSource> Mirrored(std::shared_ptr<const PixelSource> picture);

// Top to bottom, of a picture that has rows from the bottom.
std::shared_ptr<const PixelSource> UpsideDown(std::shared_ptr<const PixelSource> picture);

} // namespace imaginglibrary
