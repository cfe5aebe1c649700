// Reading pictures that may claim to be of any size.
#pragma once

#include "imaginglibrary/core/picture.h"

namespace fuzz {

// Reads rows until the picture ends or fails, or as many pixels were read as one input has the time for. Gives back
// whether all rows were there.
bool ReadSomeRows(const imaginglibrary::PixelSource& picture);

} // namespace fuzz
