// Shows a picture of any format as one with a palette, for formats that have nothing else.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <memory>

namespace imaginglibrary {

// An Indexed8 picture that looks like `picture`, which must outlive it and its readers. Reads `picture` once to choose
// the palette and again for each reader of the result; memory does not depend on the height. A failure to read is
// given back.
//
// Pixels with alpha below 128 become holes: one fully transparent entry, the last of the palette, with the colour of
// the first hole, so that holes which are all alike come through unchanged. Other pixels are laid over white and are
// opaque. If all colours and the holes fit into `entries` (2 to 256), every opaque pixel keeps its colour exactly.
// Otherwise a palette is chosen for the picture and the error is diffused.
Result<std::unique_ptr<PixelSource>> ReducedToPalette(const PixelSource& picture, unsigned entries = 256);

} // namespace imaginglibrary
