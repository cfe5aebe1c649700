// The orientation that a file stores about its picture, and the turn that it asks for.
#pragma once

#include "base/geometry.h"
#include "imaging/gdiplus/flattypes.h"

#include <cstdint>
#include <optional>

namespace lumbrix {

// What the imaging library calls the turn, 0 to 7, that shows an image as its stored orientation says. Nothing where no
// orientation is stored, or one that is not 1 to 8.
std::optional<std::int32_t> UprightTurn(ImageHandle image);

// The size of a picture behind such a turn; also the one before it.
PixelSize TurnedSize(PixelSize size, std::int32_t turn);

} // namespace lumbrix
