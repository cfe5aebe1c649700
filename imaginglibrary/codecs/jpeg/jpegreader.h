// Reads JPEG files.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// Grey becomes Indexed8 with a palette of 256 greys, everything else Rgb24; CMYK is shown without a colour profile.
// The resolution is JFIF's, where it has a unit. Memory is constant for files of one scan; progressive files need their
// coefficients, which is checked when the rows are opened. Image data that are damaged or missing are 128 in every
// channel, and make the picture's Damage known. InvalidParameter for a picture beyond the limits, UndecodableContent
// for a broken header and for 12-bit and lossless files.
Result<std::unique_ptr<Decoder>> OpenJpeg(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
