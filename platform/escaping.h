// Bytes in lines of text, on Linux: as they are, or as a percent sign and two hexadecimal digits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumbrix {

// Two digits, letters in capitals.
std::string Hexadecimal(char byte);

// Nothing for what are not two digits; small letters will do.
std::optional<char> FromHexadecimal(std::string_view digits);

// Control characters, percent signs and those in `also` are escaped.
std::string Escaped(std::string_view text, std::string_view also = {});

// Nothing where a percent sign has no two digits behind it.
std::optional<std::string> Unescaped(std::string_view escaped);

} // namespace lumbrix
