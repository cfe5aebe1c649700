// Cuts a rectangle out of an image file.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/outcome.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// A rectangle of an image as a new image in the same pixel format. The imaging library's status.
FlatStatus CloneImageArea(ImageHandle image, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                          ImageHandle* clone);

struct CropOrder {
    std::string source;
    std::string destination;
    std::string mimeWord;
    std::int32_t x; // all in pixels of the source
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

// The source's properties go along.
Outcome Crop(const CropOrder& order, const Wishes& wishes);

// As established: the destination's extension names the format. Refused for a blank name, an unknown extension, a width
// or height not above 0, a source that does not load or is damaged, and a rectangle larger than the image; the imaging
// library's status for one that runs over an edge. A save that fails is not seen.
StatusValue CropImage(const std::string& source, const std::string& destination, std::int32_t x, std::int32_t y,
                      std::int32_t width, std::int32_t height);

} // namespace lumbrix
