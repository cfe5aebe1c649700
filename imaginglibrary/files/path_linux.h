// File names at the door to the system: wide text turned into the bytes of a path.
#pragma once

#include <string>

namespace imaginglibrary {

// UTF-16 to UTF-8. A lone surrogate 0xDC80 to 0xDCFF becomes the single byte 0x80 to 0xFF, so that names that are not
// valid UTF-8 can be passed through wide text; other lone surrogates become U+FFFD.
std::string PathBytes(const std::u16string& path);

} // namespace imaginglibrary
