// 8-bit text in the system's code page, and wide text as the imaging library and COM want it.
#pragma once

#include <string>
#include <string_view>

namespace lumbrix {

// On Windows the code page is the ANSI one. On Linux it is UTF-8; a byte that is not valid there becomes the lone
// surrogate 0xDC00 + byte and comes back as that byte, so every file name survives the way there and back.
std::u16string ToWide(std::string_view text);
std::string ToNarrow(std::u16string_view text);

} // namespace lumbrix
