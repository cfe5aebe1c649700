// The property items of PNG files, as they are read and as they are written.
#pragma once

#include "imaginglibrary/core/properties.h"
#include "imaginglibrary/files/inputfile.h"

#include <string>

namespace imaginglibrary {

// The items of the chunks before the image data: texts, then gamma, chromaticities, rendering intent, dots per unit,
// histogram and colour profile, then those of EXIF. Chunks that are broken, longer than MaximumMetadataBytes in sum or
// beyond MaximumMetadataEntries are passed over.
PropertyList ReadPngProperties(const InputFile& file);

struct PngText {
    const char* keyword;
    std::string text;
    bool isUtf8; // else it has one byte for a character
};

struct PngMetadata {
    std::vector<PngText> texts;
    std::vector<std::uint8_t> exif; // empty where texts say it all
};

// What carries the items in a file. Colours are the writer's own business.
PngMetadata MakePngMetadata(const PropertyList& properties);

} // namespace imaginglibrary
