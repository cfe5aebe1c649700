// Makes a picture of another size.
#pragma once

#include "imaginglibrary/core/bitmap.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace imaginglibrary {

// How new pixels come of old ones.
enum class Resampling {
    Smooth,  // shrinking averages, enlarging is by cubic convolution
    Linear,  // shrinking averages, enlarging is linear between neighbours
    Nearest, // every new pixel is one old pixel
};

// Cubic convolution (Keys, 1981): the weight of a sample at a distance; 0 from 2 on.
double KeysCubic(double distance);

// Makes `width` by `height` premultiplied pixels of the whole picture, and calls `use(y, row)` for each row from the
// top, perhaps on another thread, which has ended when this returns. Shrinking averages all that each new pixel covers
// (Lanczos kernel of three lobes, widened by the factor: Turkowski, "Filters for Common Resampling Tasks", 1990).
// Weights are scaled to sum to one at the borders, so edges neither darken nor fade. Reads the source once from the
// top, at a smaller scale where that is cheaper, and holds only as many rows of the new width as the kernel spans. Both
// sides must be at least 1. The first status other than Ok ends it: that of reading or of using.
Status ResampleRows(const PixelSource& picture, std::uint32_t width, std::uint32_t height, Resampling resampling,
                    const std::function<Status(std::uint32_t y, const std::uint8_t* row)>& use);

// The same in memory.
Result<std::shared_ptr<Bitmap>> Resample(const PixelSource& picture, std::uint32_t width, std::uint32_t height,
                                         Resampling resampling = Resampling::Smooth);

} // namespace imaginglibrary
