// Reads EXIF blocks and the directories of TIFF files into property items.
#pragma once

#include "imaginglibrary/core/properties.h"
#include "imaginglibrary/files/inputfile.h"

#include <cstdint>
#include <span>

namespace imaginglibrary {

enum class ExifThumbnail { Keep, PassOver };

// Adds the items of a block, which begins with its byte order: those of the main, the EXIF, the GPS and the
// interoperability directory, in this order, at last the thumbnail. What is broken is passed over. Gives back the items
// that go behind all others: those of GPS entries whose tags the main directory has as well.
std::vector<Property> ReadExif(std::span<const std::uint8_t> block, ExifThumbnail thumbnail, PropertyList& properties);

// The same of the first picture of a TIFF file, what tells of its layout included. A file of the big kind gives none.
// Where a maker's note stands near the file's start, the list gets a block in which it stands at the same place.
void ReadTiffProperties(const InputFile& file, PropertyList& properties);

} // namespace imaginglibrary
