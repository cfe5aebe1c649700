// The rectangle that cropping uses, one for the whole program.
#pragma once

#include <cstdint>

namespace lumbrix {

// In pixels of the full-size picture; right and bottom are not part of it. All zero until something is marked.
struct CropRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

// Written by the crop window and the crop dimensions dialog, read by the batch driver and the crop action. Belongs to
// the main thread.
inline CropRectangle CropRect;

} // namespace lumbrix
