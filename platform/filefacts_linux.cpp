// What can be found out about files on Linux.
#include "platform/filefacts.h"
#include "platform/files.h"
#include "platform/newfile_linux.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

namespace lumbrix {

namespace {

namespace fs = std::filesystem;

// Without waiting for whoever is at the other end of a pipe.
bool CanOpen(const std::string& path, int flags) {
    const int file = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return false;
    }
    close(file);
    return true;
}

} // namespace

FileKind KindOfFile(const std::string& path, TextEncoding /*encoding*/) {
    std::error_code error;
    const fs::file_status facts = fs::status(path, error);
    if (fs::is_directory(facts)) {
        return FileKind::Folder;
    }
    if (fs::is_regular_file(facts)) {
        return FileKind::Regular;
    }
    const bool isNameBad = error == std::errc::filename_too_long || error == std::errc::invalid_argument;
    if (isNameBad) {
        return FileKind::Impossible;
    }
    return fs::exists(facts) ? FileKind::Other : FileKind::Missing;
}

bool CanReadFile(const std::string& path, TextEncoding /*encoding*/) { return CanOpen(path, O_RDONLY); }

bool CanWriteFile(const std::string& path, TextEncoding /*encoding*/) { return CanOpen(path, O_RDWR); }

bool AreTooManyFilesOpen() { return !CanOpen("/", O_RDONLY) && (errno == EMFILE || errno == ENFILE); }

bool CanMakeFileIn(const std::string& folder, TextEncoding /*encoding*/) {
    return NewFile(NameBeside(folder + PathSeparator)).Open(S_IRUSR | S_IWUSR) == 0;
}

bool IsSameFile(const std::string& one, const std::string& other, TextEncoding /*encoding*/) {
    std::error_code error;
    return fs::equivalent(one, other, error);
}

std::string FullFolderOf(const std::string& path, TextEncoding /*encoding*/) {
    std::error_code error;
    return fs::absolute(path, error).parent_path().string();
}

} // namespace lumbrix
