// What callers of the operations may want to know beforehand, and a way round what the operations do not draw on.
#pragma once

#include "imaging/status.h"

#include <string>

namespace lumbrix {

// Whether a font family of this name is installed, or one that stands in for it with the same measures.
bool HasFontFamily(const std::string& name);

// Whether the picture in a file has an indexed pixel format, which nothing can be drawn on. False where it cannot be
// read.
bool HasIndexedPixels(const std::string& name);

// Writes the picture of a file as PNG with 32-bit pixels, its properties along. Refused for a blank name and for a
// source that does not load, else the imaging library's status.
StatusValue CopyAsTrueColor(const std::string& source, const std::string& destination);

} // namespace lumbrix
