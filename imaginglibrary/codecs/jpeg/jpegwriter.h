// Writes JPEG files.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// Baseline, quality 75, three components with colour at half resolution, for grey pictures too; alpha goes over white.
// The resolution is stored in whole dots per inch, rounded down, 96 where the picture has none. Property items become
// an EXIF block and a comment. Rows go through one at a time. InvalidParameter for a side above 65500.
Status WriteJpeg(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                 OutputFile& file);

} // namespace imaginglibrary
