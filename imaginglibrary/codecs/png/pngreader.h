// Reads PNG files of every colour type and depth.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// Palettes of 1, 4 and 8 bits and one-bit grey stay indexed and 8-bit RGB stays Rgb24; everything else, and everything
// with a transparency chunk, becomes Argb32. A gamma chunk and colour profiles change nothing. An interlaced picture
// is held in memory while its rows are read; all others are decoded in bands. A file that is broken behind its last
// row is accepted.
Result<std::unique_ptr<Decoder>> OpenPng(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
