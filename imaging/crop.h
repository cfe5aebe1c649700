// Cuts a rectangle out of an image file.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/status.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// A rectangle of an image as a new image in the same pixel format. The imaging library's status.
FlatStatus CloneImageArea(ImageHandle image, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                          ImageHandle* clone);

// In pixels of the source; the destination's extension names the format, and the source's properties go along. Refused
// for a blank name, an unknown extension, a width or height not above 0, a source that does not load, and a rectangle
// larger than the image; the imaging library's status for one that runs over an edge. A save that fails is not seen.
StatusValue CropImage(const std::string& source, const std::string& destination, std::int32_t x, std::int32_t y,
                      std::int32_t width, std::int32_t height);

} // namespace lumbrix
