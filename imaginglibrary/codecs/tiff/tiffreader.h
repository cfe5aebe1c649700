// Reads the first picture of a TIFF file.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// Strips and tiles, contiguous and planar, in every compression libtiff was built with; which pixels become of it
// stands at ReadTiffLayout. Rows come in the file's order: an orientation tag is not applied. A pass holds the
// compressed data of one strip and a decoded row, or one row of tiles; where libtiff itself must convert the colours,
// one strip.
Result<std::unique_ptr<Decoder>> OpenTiff(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
