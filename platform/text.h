// 8-bit text: replacing in it, and going to wide text and back, as the imaging library and COM want it.
#pragma once

#include <string>
#include <string_view>

namespace lumbrix {

// The text with `before` replaced by `after` wherever it stands; what was put in is not looked at again. `before` is
// not empty.
std::string ReplaceAll(std::string text, std::string_view before, std::string_view after);

// Between the system's code page and wide text. On Windows the code page is the ANSI one. On Linux it is UTF-8; a byte
// that is not valid there becomes the lone surrogate 0xDC00 + byte and comes back as that byte, so every file name
// survives the way there and back.
std::u16string ToWide(std::string_view text);
std::string ToNarrow(std::u16string_view text);

// What 8-bit text is in: the system's code page, or UTF-8, which on Linux is one and the same.
enum class TextEncoding { CodePage, Utf8 };

std::u16string ToWide(std::string_view text, TextEncoding encoding);
std::string ToNarrow(std::u16string_view text, TextEncoding encoding);

} // namespace lumbrix
