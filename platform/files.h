// Files and folders under 8-bit names. What is said to raise throws RuntimeError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumbrix {

// What stands between the folders of a path, and whatever may stand before a file's name.
#ifdef _WIN32
inline constexpr char PathSeparator = '\\';
inline constexpr const char* PathSeparators = "\\/:";
#else
inline constexpr char PathSeparator = '/';
inline constexpr const char* PathSeparators = "/";
#endif

// Deletes a file; passes over one marked hidden or system. Raises where there is none or it cannot be deleted.
void RemoveFile(const std::string& path);

// Deletes a file, also one marked hidden or system. The system's error number, 0 for success.
int TryToRemoveFile(const std::string& path);

// Whether a file of that name is there and not marked hidden or system; folders do not count.
bool FileExists(const std::string& path);

// Whether a folder of that name is there; a separator behind the name does not matter.
bool FolderExists(const std::string& path);

// The size in bytes, or nothing where the file is not found.
std::optional<std::uint64_t> FileSize(const std::string& path);

// The names of the files in a folder, without folders and without those marked hidden or system; none where the folder
// cannot be listed.
std::vector<std::string> FilesIn(const std::string& folder);

// Makes a folder with all folders above it. Raises where it cannot be made.
void MakeFolders(const std::string& folder);

// Removes an empty folder. Raises where it is not empty or cannot be removed.
void RemoveFolder(const std::string& folder);

// Opens a file for writing without emptying it, makes it if it is missing, and writes `bytes` over its start. Raises on
// an empty name, and where it cannot be written.
void WriteIntoFile(const std::string& path, const std::string& bytes);

// Makes a file with this content, in the place of one that is there. Raises where it cannot be written.
void WriteWholeFile(const std::string& path, const std::string& bytes);

// Who may read a file that is new; on Windows its folder says so.
enum class Readers { AsUsual, OwnerOnly };

// As WriteWholeFile, but in one step, with the bytes on the disk by then: a failure leaves the file that is there as it
// was, and nothing beside it. On Linux the file that is replaced hands on its permissions, and behind a link that file
// is meant.
void ReplaceWholeFile(const std::string& path, const std::string& bytes, Readers readers = Readers::AsUsual);

// Adds bytes at the end of a file, and makes it if it is missing. Raises where it cannot, and then none are added.
void AppendToFile(const std::string& path, const std::string& bytes);

// Copies the bytes of a file to another name; should the source be hidden or read-only, the copy is not. A file of that
// name is replaced in one step, by a copy that is on the disk by then, so neither a failure nor a loss of power leaves
// anything but the one or the other. Raises on an empty name, and where the copy cannot be
// made.
void DuplicateFile(const std::string& source, const std::string& target);

// The whole content. Raises where it cannot be read.
std::string ReadFileContent(const std::string& path);

// The same for a small file of ours or the user's: empty where it is missing, hidden, cannot be read or is longer than
// a mebibyte.
std::string ReadSmallFile(const std::string& path);

// The system's folder for temporary files, with its separator.
std::string TemporaryFolderPath();

// Makes a new, empty file in the temporary folder, named `prefix`, hexadecimal digits and ".tmp". Raises where it
// cannot be made.
std::string NewTemporaryFile(const std::string& prefix);

// The full path of the running program, cut at 255 characters.
std::string ProgramPath();

// The system's own folder and the one of Windows, without a separator behind; empty on Linux.
std::string SystemFolder();
std::string WindowsFolder();

// A search for files by a name with wildcards, as one thread goes through it.
class FileSearch {
  public:
    // The bare name of the first match of a pattern. An empty pattern goes on with the search before; empty text where
    // there is no further match. Folders and files marked hidden or system are passed over. Raises where the pattern's
    // folder cannot be listed; what goes on with that search finds nothing.
    std::string FirstMatch(const std::string& pattern);

  private:
    std::vector<std::string> found_;
    std::size_t next_ = 0;
};

} // namespace lumbrix
