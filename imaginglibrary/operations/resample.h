// Makes a picture of another size.
#pragma once

#include "imaginglibrary/core/bitmap.h"

#include <cstdint>
#include <memory>

namespace imaginglibrary {

// The whole picture as `width` by `height` premultiplied pixels. Shrinking averages all that each new pixel covers
// (Lanczos kernel of three lobes, widened by the factor: Turkowski, "Filters for Common Resampling Tasks", 1990);
// enlarging is smooth (cubic convolution: Keys, 1981). Weights are scaled to sum to one at the borders, so edges
// neither darken nor fade. Reads the source once from the top, and holds only as many rows of the new width as the
// kernel spans. Both sides must be at least 1.
Result<std::shared_ptr<Bitmap>> Resample(const PixelSource& picture, std::uint32_t width, std::uint32_t height);

} // namespace imaginglibrary
