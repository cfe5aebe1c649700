// What the command line needs of the system, where Windows and Linux differ.
#pragma once

#include <filesystem>
#include <string>

namespace lumbrix::cli {

// A file name as the command line and the operations have it, in the system's 8-bit code page, as a path and back.
std::filesystem::path PathOf(const std::string& name);
std::string NameOf(const std::filesystem::path& path);

// Whether that code page is UTF-8.
bool AreTextsUtf8();

// Two paths with the same key are one file: letter case does not tell files apart on Windows.
std::filesystem::path FileKey(const std::filesystem::path& path);

bool IsErrorOutputATerminal();

} // namespace lumbrix::cli
