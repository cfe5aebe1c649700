// Metafiles, which the system plays.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// Rgb32, drawn on white when rows are asked for. Enhanced ones, and those of 16-bit Windows with a header of their
// bounds in front.
Result<std::unique_ptr<Decoder>> OpenEnhancedMetafile(std::shared_ptr<const InputFile> file);
Result<std::unique_ptr<Decoder>> OpenPlaceableMetafile(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
