// The formats that are written.
#pragma once

#include <string>

namespace lumbrix::cli {

// The word of a format, such as "png", for one that was given in any letter case. Throws WrongUsage for an unknown one.
const char* FormatOfWord(const std::string& word);

// Throws WrongUsage for a file name whose extension names no format that is written.
void RequireFormat(const std::string& target);

} // namespace lumbrix::cli
