// Writes GIF files.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// One image, not interlaced, GIF87a or, with a transparent entry or a comment, GIF89a; of the property items, only a
// comment and XMP are written. An indexed picture keeps its palette in its order, in the smallest table that holds
// every index in use; all its fully transparent entries become the first of them. Any other picture, and one with
// half-transparent entries, is reduced to a palette of its own first. Rows go through one at a time, in up to two
// readings of the picture.
Status WriteGif(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                OutputFile& file);

} // namespace imaginglibrary
