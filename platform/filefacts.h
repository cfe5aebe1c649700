// What can be found out about files without changing them, to tell people why something could not be done.
#pragma once

#include <string>

namespace lumbrix {

enum class FileKind {
    Missing,
    Regular,
    Folder,
    Other,
    Impossible, // no file can have the name: it is too long, or has characters that none may have
};

// What stands under a name; behind a link, what it leads to.
FileKind KindOfFile(const std::string& path);

// Whether the file can be opened at this moment.
bool CanReadFile(const std::string& path);
bool CanWriteFile(const std::string& path);

// Whether a new file can be made in a folder. Tries it, and leaves nothing behind.
bool CanMakeFileIn(const std::string& folder);

// Whether two names lead to one file that is there.
bool IsSameFile(const std::string& one, const std::string& other);

// The folder that a file of this name lies in, in full and without a separator behind.
std::string FullFolderOf(const std::string& path);

} // namespace lumbrix
