// The formats that are written, and the procedures that write them.
#pragma once

#include "imaging/exports/lumbrix.h"

#include <string>

namespace lumbrix::cli {

struct Format {
    const char* word; // the extension without its dot
    int32_t(LUMBRIX_CALL* convert)(const char* source, const char* destination);
    int32_t(LUMBRIX_CALL* convertToThumb)(const char* source, int32_t height, const char* destination);
};

// The format with a word such as "png", in any letter case. Throws WrongUsage where there is none.
const Format& FormatOfWord(const std::string& word);

// The format that the extension of a file name means. Throws WrongUsage where it means none.
const Format& FormatOfTarget(const std::string& target);

} // namespace lumbrix::cli
