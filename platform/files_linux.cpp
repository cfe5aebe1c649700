// Files and folders through the standard library and a few system calls.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/newfile_linux.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lumbrix {

namespace {

[[noreturn]] void Raise(int number, const char* action, const std::string& path) {
    throw RuntimeError(number, std::string(action) + " " + path + ": " + SystemReason(number));
}

// A file that is closed when this goes. Raises where it cannot be opened.
class OpenFile {
  public:
    OpenFile(const std::string& path, int flags) : file_(open(path.c_str(), flags | O_CLOEXEC, 0666)) {
        if (file_ < 0) {
            Raise(errno, "cannot open", path);
        }
    }
    ~OpenFile() { Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Get() const { return file_; }

    // Some file systems tell only now that they could not write. The error number, 0 for success.
    int Close() { return file_ >= 0 && close(std::exchange(file_, -1)) != 0 ? errno : 0; }

  private:
    int file_;
};

void WriteAt(const std::string& path, const std::string& bytes, int flags) {
    OpenFile file(path, O_CREAT | flags);
    int error = WriteAllTo(file.Get(), bytes.data(), bytes.size());
    if (error == 0) {
        error = file.Close();
    }
    if (error != 0) {
        Raise(error, "cannot write", path);
    }
}

// Takes back what was appended of a piece that did not fit, unless another program has gone on behind it.
void TakeBack(int file, off_t sizeBefore) {
    struct stat facts {};
    const off_t end = lseek(file, 0, SEEK_CUR);
    if (fstat(file, &facts) == 0 && facts.st_size == end && end > sizeBefore) {
        (void)!ftruncate(file, sizeBefore);
    }
}

// Copies up to the end of a file. The error number, 0 for success.
int CopyAll(int from, NewFile& to) {
    std::vector<char> buffer(std::size_t{1} << 18);
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count == 0) {
            return 0;
        }
        const int error = count > 0 ? to.Append(buffer.data(), static_cast<std::size_t>(count)) : errno;
        if (error != 0 && error != EINTR) {
            return error;
        }
    }
}

int Copy(const std::string& source, const std::string& target) {
    struct stat facts {};
    if (stat(source.c_str(), &facts) != 0) {
        return errno;
    }
    if (!S_ISREG(facts.st_mode)) {
        return EINVAL;
    }
    const OpenFile from(source, O_RDONLY);
    NewFile to(target);
    int error = to.Open((facts.st_mode & 0777) | S_IWUSR);
    if (error == 0) {
        error = CopyAll(from.Get(), to);
    }
    return error == 0 ? to.Commit() : error;
}

// As FilesIn. Raises where the folder cannot be listed.
std::vector<std::string> List(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored)) {
            names.push_back(entry->path().filename().string());
        }
    }
    if (error) {
        Raise(error.value(), "cannot list", folder);
    }
    return names;
}

} // namespace

std::string SystemReason(int number) { return std::strerror(number); }

void RemoveFile(const std::string& path) {
    if (const int number = TryToRemoveFile(path); number != 0) {
        Raise(number, "cannot delete", path);
    }
}

int TryToRemoveFile(const std::string& path) { return unlink(path.c_str()) == 0 ? 0 : errno; }

bool FileExists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

bool FolderExists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

std::optional<std::uint64_t> FileSize(const std::string& path) {
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(path, error);
    return error ? std::nullopt : std::optional(size);
}

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> names;
    trap([&] { names = List(folder); });
    return names;
}

void MakeFolders(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        Raise(error.value(), "cannot make", folder);
    }
}

void RemoveFolder(const std::string& folder) {
    if (rmdir(folder.c_str()) != 0) {
        Raise(errno, "cannot remove", folder);
    }
}

void WriteIntoFile(const std::string& path, const std::string& bytes) { WriteAt(path, bytes, O_RDWR); }

void WriteWholeFile(const std::string& path, const std::string& bytes) { WriteAt(path, bytes, O_WRONLY | O_TRUNC); }

void AppendToFile(const std::string& path, const std::string& bytes) {
    OpenFile file(path, O_CREAT | O_WRONLY | O_APPEND);
    const off_t sizeBefore = lseek(file.Get(), 0, SEEK_END);
    int error = WriteAllTo(file.Get(), bytes.data(), bytes.size());
    if (error != 0) {
        TakeBack(file.Get(), sizeBefore);
    } else {
        error = file.Close();
    }
    if (error != 0) {
        Raise(error, "cannot write", path);
    }
}

void ReplaceWholeFile(const std::string& path, const std::string& bytes, Readers readers) {
    NewFile file(path);
    int error = file.Open(readers == Readers::OwnerOnly ? 0600 : 0666);
    if (error == 0) {
        error = file.Append(bytes.data(), bytes.size());
    }
    if (error == 0) {
        error = file.Commit();
    }
    if (error != 0) {
        Raise(error, "cannot write", path);
    }
}

void DuplicateFile(const std::string& source, const std::string& target) {
    if (const int error = Copy(source, target); error != 0) {
        Raise(error, "cannot copy to", target);
    }
}

std::string ReadFileContent(const std::string& path) {
    const OpenFile file(path, O_RDONLY);
    std::string content;
    char buffer[16384];
    ssize_t count = 0;
    while ((count = read(file.Get(), buffer, sizeof buffer)) != 0) {
        if (count < 0 && errno != EINTR) {
            Raise(errno, "cannot read", path);
        }
        content.append(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return content;
}

std::string TemporaryFolderPath() {
    const char* named = std::getenv("TMPDIR");
    std::string folder = named != nullptr && *named != 0 ? named : "/tmp";
    if (folder.back() != PathSeparator) {
        folder.push_back(PathSeparator);
    }
    return folder;
}

std::string NewTemporaryFile(const std::string& prefix) {
    constexpr int Attempts = 100;
    for (int attempt = 0;; ++attempt) {
        std::string path = TemporaryFolderPath() + prefix + HexadecimalDigits() + ".tmp";
        const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
        if (file >= 0) {
            close(file);
            return path;
        }
        if (errno != EEXIST || attempt == Attempts) {
            Raise(errno, "cannot make", path);
        }
    }
}

std::string ProgramPath() {
    constexpr std::size_t Longest = 255;
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string().substr(0, Longest);
}

std::string SystemFolder() { return {}; }
std::string WindowsFolder() { return {}; }

std::string FileSearch::FirstMatch(const std::string& pattern) {
    if (!pattern.empty()) {
        const std::filesystem::path path(pattern);
        const std::string folder = path.has_parent_path() ? path.parent_path().string() : ".";
        found_.clear();
        next_ = 0;
        for (std::string& name : List(folder)) {
            if (fnmatch(path.filename().c_str(), name.c_str(), FNM_CASEFOLD) == 0) {
                found_.push_back(std::move(name));
            }
        }
    }
    return next_ < found_.size() ? found_[next_++] : std::string();
}

} // namespace lumbrix
