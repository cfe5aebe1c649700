// BMP files: read in every historic form, written with the 40-byte header, bottom row first, never compressed.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"

#include <memory>

namespace imaginglibrary {

// Indexed pictures and those of 16 bits that the platform has a format for keep it; the others are Rgb24 or Rgb32.
// Run-length coded ones are held in memory while they are read.
Result<std::unique_ptr<Decoder>> OpenBmp(std::shared_ptr<const InputFile> file);

// Rows go through in strips. Properties cannot be stored. ValueOverflow for a file beyond 4 GiB.
Status WriteBmp(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                OutputFile& file);

} // namespace imaginglibrary
