// Getting rid of temporary files: deletion that cannot fail, a list of what is left to delete, and the Work folder.
//
// The list is the text file "CleanUp.txt" in the program's folder, one full path a line, each closed by CR LF, in the
// order of appending; it exists only while it has something to do. All of this belongs to the main thread.
#pragma once

#include <string>

namespace lumbrix {

// The folder of the program file, with its separator: where the list and the Work folder lie.
std::string ProgramFolder();

// Deletes a file, or lists it for the next start where that fails. `folder` is the program's.
void DeleteOrListFile(const std::string& path, const std::string& folder = ProgramFolder());

// Adds a line to the list. Raises RuntimeError where the list cannot be written.
void AppendToCleanUpList(const std::string& path, const std::string& folder = ProgramFolder());

// Gives every listed file one further attempt, then deletes the list.
void SweepCleanUpList(const std::string& folder = ProgramFolder());

// Makes the Work folder if it is missing, deletes or lists the files in it, and removes it if it can be removed.
void SweepWorkFolder(const std::string& folder = ProgramFolder());

// The system's folder for temporary files, with its separator.
std::string TempFolderPath();

// The full path of a new, empty temporary file: "IMG", hexadecimal digits, ".tmp". The engine writes JPEG to such a
// name. Raises RuntimeError where it cannot be made.
std::string NewTempImageName();

// Makes the file if it is missing; an existing one keeps its content. Raises RuntimeError where it cannot be opened.
void EnsureFileExists(const std::string& path);

} // namespace lumbrix
