// The formats that are written.
#pragma once

#include <filesystem>
#include <string>

namespace lumbrix::cli {

// The word of a format, such as "png", for one that was given in any letter case. Throws WrongUsage for an unknown one.
const char* FormatOfWord(const std::string& word);

// The word of the format that a file's extension names, be it one of the rarer extensions such as .dib and .jfif; null
// for one that is not written.
const char* FormatOfName(const std::filesystem::path& file);

// Throws WrongUsage for a file name whose extension names no format that is written.
void RequireFormat(const std::string& target);

} // namespace lumbrix::cli
