// The property items of JPEG files, as they are read and as they are written.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <cstddef>
// libjpeg's header names FILE without declaring it.
#include <cstdio>
#include <jpeglib.h>

namespace imaginglibrary {

// A marker's longest content; its length counts itself.
inline constexpr std::size_t MaximumMarkerBytes = 65533;

// The items of a file whose header was read and whose markers were kept: those of EXIF, a comment, and the two
// quantisation tables in their natural order.
PropertyList ReadJpegProperties(const jpeg_decompress_struct& header);

} // namespace imaginglibrary
