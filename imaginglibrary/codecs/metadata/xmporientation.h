// The orientation that an XMP packet tells of.
#pragma once

#include <string>
#include <string_view>

namespace imaginglibrary {

// The packet with blanks in the place of every Orientation of its TIFF namespace, whatever prefix that has, be it an
// attribute or an element; everything else stands where it stood. What is not well formed stays.
std::string WithoutOrientation(std::string_view packet);

} // namespace imaginglibrary
