// Numbers and colours as words of the command line. All throw WrongUsage for a word that is none.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace lumbrix::cli {

inline constexpr std::int32_t NoBound = std::numeric_limits<std::int32_t>::max();

// A whole number from `least` to `most`. `what` says what it is good for, as in "invalid height '5x'".
std::int32_t WholeNumber(const std::string& text, const char* what, std::int32_t least, std::int32_t most = NoBound);

inline std::int32_t PositiveNumber(const std::string& text, const char* what) { return WholeNumber(text, what, 1); }

// A place on a picture or outside of it, in pixels from the left or the top.
float Position(const std::string& text, const char* what);

struct Color {
    std::int32_t red = 0;
    std::int32_t green = 0;
    std::int32_t blue = 0;
};

// A colour as six hexadecimal digits, RRGGBB.
Color ColorFrom(const std::string& text);

} // namespace lumbrix::cli
