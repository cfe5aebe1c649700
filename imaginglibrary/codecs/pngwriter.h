// Writes PNG files.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// Indexed pictures keep their depth and palette, with a transparency chunk where an entry is not opaque; pictures with
// alpha become RGBA, all others RGB, of 8 bits a channel. Property items
// become text chunks and an EXIF chunk. Not interlaced; one row is held at a time.
Status WritePng(const PixelSource& picture, const PropertyList& properties, OutputFile& file);

} // namespace imaginglibrary
