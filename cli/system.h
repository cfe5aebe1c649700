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

// Where temporary files belong; it may not be there.
std::filesystem::path FolderForTemporaryFiles();

// For a program that is being ended: remove a file, or an empty folder, without a word and without waiting for
// anything, so that a signal handler may do so.
void RemoveFileAtOnce(const std::filesystem::path::value_type* path);
void RemoveFolderAtOnce(const std::filesystem::path::value_type* path);

// Waits until a file's content is on the disk; false where that failed.
bool FlushToDisk(const std::filesystem::path& path);

bool IsErrorOutputATerminal();

} // namespace lumbrix::cli
