// Writes TIFF files.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// A file of one picture, little-endian but where an EXIF block of the other order came with the items, in strips of
// about 64 KiB, written as the rows come:
//
//   Indexed1 in black and white          bilevel, CCITT group 4
//   Indexed4 and Indexed8 in a grey ramp  grey of 4 or 8 bits, LZW, horizontal differences where there are 8
//   other opaque palettes                palette of 1, 4 or 8 bits, LZW
//   palettes with transparency           RGBA as below
//   Rgb555, Rgb565, Rgb24, Rgb32, Rgb48  RGB of 8 bits, LZW with horizontal differences
//   Argb1555, Argb32, Pargb32            RGBA of 8 bits, alpha not associated, LZW with horizontal differences
//
// The resolution is in dots per inch, 96 where the picture has none. Property items that tell of resolution and
// orientation take their place; nothing else of the layout follows the items.
Status WriteTiff(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                 OutputFile& file);

} // namespace imaginglibrary
