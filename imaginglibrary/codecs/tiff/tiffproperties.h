// Adds property items to a TIFF file that is written otherwise.
#pragma once

#include "imaginglibrary/core/properties.h"
#include "imaginglibrary/files/outputfile.h"

namespace imaginglibrary {

// `file` is a whole little-endian TIFF file of the classic kind. Where there are items to write, a new directory with
// the old one's entries and the items goes to the end of the file; otherwise the file stays as it is. Of the old
// entries, only those of resolution and orientation give way to items.
Status AddTiffProperties(const PropertyList& properties, OutputFile& file);

} // namespace imaginglibrary
