// The property items of JPEG files, as they are read and as they are written.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <cstdint>
#include <vector>
// libjpeg's header names FILE without declaring it.
#include <cstdio>
#include <jpeglib.h>

namespace imaginglibrary {

// The items of a file whose header was read and whose markers were kept: those of EXIF, a comment, the colour profile,
// the two quantisation tables in their natural order, what shares its tag with one of these, XMP, IPTC data and image
// resources.
PropertyList ReadJpegProperties(const jpeg_decompress_struct& header, std::vector<std::uint8_t> colorProfile);

struct JpegMarker {
    int kind;
    std::vector<std::uint8_t> content;
};

// The markers that carry the items, in their order in the file. An EXIF block that came with them stays as it is but
// for what is changed. Of what is longer than a marker may be, the thumbnail, then the largest values are left out; a
// comment is cut.
std::vector<JpegMarker> MakeJpegMarkers(const PropertyList& properties);

} // namespace imaginglibrary
