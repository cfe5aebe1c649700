// Turns of a picture as a whole.
#pragma once

#include "imaginglibrary/core/bitmap.h"

#include <memory>

namespace imaginglibrary {

// Reads the picture once from the top. `code` is one of turn.h; `turned` describes what comes of it.
Result<std::shared_ptr<Bitmap>> TurnInMemory(const PixelSource& picture, unsigned code, const PictureInfo& turned);

} // namespace imaginglibrary
