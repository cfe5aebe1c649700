// Adds property items to a TIFF file that is written otherwise.
#pragma once

#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// The EXIF block that came with the items, brought up to what they say, without its thumbnail; nothing where there is
// none. A TIFF file that begins with it keeps its directories and values at their old offsets.
std::optional<ExifEditor> ExifOfSource(const PropertyList& properties);

// Puts it into a file of its byte order of which only the header is there.
Status AddExifOfSource(const ExifEditor& exif, OutputFile& file);

// `file` is a whole TIFF file of the classic kind, little-endian but where it begins with `exif`, which may be null.
// Where there are items to write, a new directory with the old one's entries and the items goes to the end of the file;
// otherwise the file stays as it is. Of the old entries, only those of resolution and orientation give way to items.
Status AddTiffProperties(const PropertyList& properties, const ExifEditor* exif, OutputFile& file);

} // namespace imaginglibrary
