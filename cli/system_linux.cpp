// What the command line needs of Linux.
#include "cli/system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace lumbrix::cli {

std::filesystem::path PathOf(const std::string& name) { return name; }

std::string NameOf(const std::filesystem::path& path) { return path.string(); }

bool AreTextsUtf8() { return true; }

std::filesystem::path FileKey(const std::filesystem::path& path) { return path; }

std::filesystem::path FolderForTemporaryFiles() {
    const char* folder = std::getenv("TMPDIR");
    return folder == nullptr || *folder == 0 ? "/tmp" : folder;
}

void RemoveFileAtOnce(const char* path) { unlink(path); }

void RemoveFolderAtOnce(const char* path) { rmdir(path); }

bool FlushToDisk(const std::filesystem::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool isFlushed = fdatasync(descriptor) == 0;
    close(descriptor);
    return isFlushed;
}

bool IsErrorOutputATerminal() { return isatty(STDERR_FILENO) == 1; }

} // namespace lumbrix::cli
