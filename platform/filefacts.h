// What can be found out about files without changing them, to tell people why something could not be done. Names are in
// the encoding that is said, and what comes back is too.
#pragma once

#include "platform/text.h"

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
FileKind KindOfFile(const std::string& path, TextEncoding encoding = TextEncoding::CodePage);

// Whether the file can be opened at this moment.
bool CanReadFile(const std::string& path, TextEncoding encoding = TextEncoding::CodePage);
bool CanWriteFile(const std::string& path, TextEncoding encoding = TextEncoding::CodePage);

// Whether the system opens no further file at this moment, whatever it is. Never so on Windows.
bool AreTooManyFilesOpen();

// Whether a new file can be made in a folder. Tries it, and leaves nothing behind, even if the process is killed.
bool CanMakeFileIn(const std::string& folder, TextEncoding encoding = TextEncoding::CodePage);

// Whether two names lead to one file that is there.
bool IsSameFile(const std::string& one, const std::string& other, TextEncoding encoding = TextEncoding::CodePage);

// The folder that a file of this name lies in, in full and without a separator behind.
std::string FullFolderOf(const std::string& path, TextEncoding encoding = TextEncoding::CodePage);

} // namespace lumbrix
