// What the command line needs of the system, where Windows and Linux differ.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumbrix::cli {

// A file name as the command line and the operations have it, in the system's 8-bit code page, as a path and back.
std::filesystem::path PathOf(const std::string& name);
std::string NameOf(const std::filesystem::path& path);

// Whether that code page is UTF-8.
bool AreTextsUtf8();

// A text in that code page as UTF-8. On Linux it stays as it is, be it UTF-8 or not.
std::string Utf8Of(const std::string& text);

// The files that a name with "*" or "?" in its last part stands for, sorted; the name itself where there is none. On
// Linux, where shells do that, always the name itself.
std::vector<std::string> FilesMeant(const std::string& name);

// Two paths with the same key are one file: letter case does not tell files apart on Windows.
std::filesystem::path FileKey(const std::filesystem::path& path);

bool IsErrorOutputATerminal();

// From now on the standard input and output take bytes as they are.
void MakeStandardStreamsBinary();

} // namespace lumbrix::cli
