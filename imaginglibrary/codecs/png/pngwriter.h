// Writes PNG files.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// Indexed pictures keep their depth and palette, with a transparency chunk where an entry is not opaque; pictures with
// alpha become RGBA, all others RGB, of 8 bits a channel. Property items become text chunks, an EXIF chunk and a colour
// profile; without a profile the colours are marked as the screen's. Not interlaced; one row is held at a time.
Status WritePng(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                OutputFile& file);

} // namespace imaginglibrary
