// Small procedures on file names. Names are 8-bit text, and the separator is the backslash on every system.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix {

// The text with a backslash at its end; an empty text stays empty.
std::string AddBackslash(const std::string& path);

// What stands behind the last backslash, and behind the last slash of that.
std::string FileNamePart(const std::string& path);

// The file name before its first dot.
std::string BaseNamePart(const std::string& path);

// The file name behind its last dot, in its own letter case; empty without a dot.
std::string ExtensionPart(const std::string& path);

// The folder with its last backslash; empty without a backslash. Slashes separate nothing here.
std::string FolderPart(const std::string& path);

// The full path of the running program, 255 characters at most.
std::string ModulePath();

// The low 32 bits of a file's size, or -1 where the file is not found.
std::int32_t ShortcutSize(const std::string& path);

// The system's own folder and the one of Windows, each with a backslash behind.
std::string SystemFolderPath();
std::string WindowsFolderPath();

} // namespace lumbrix
