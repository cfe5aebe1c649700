// Files and folders through the standard library and a few system calls.
#include "platform/errors.h"
#include "platform/files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fnmatch.h>
#include <fstream>
#include <iterator>
#include <random>
#include <unistd.h>

namespace lumbrix {

namespace {

[[noreturn]] void Raise(int number, const char* action, const std::string& path) {
    throw RuntimeError(number, std::string(action) + " " + path + ": " + SystemReason(number));
}

void WriteAt(const std::string& path, const std::string& bytes, int flags) {
    const int file = open(path.c_str(), O_CREAT | O_CLOEXEC | flags, 0666);
    if (file < 0) {
        Raise(errno, "cannot open", path);
    }
    const ssize_t written = write(file, bytes.data(), bytes.size());
    const int number = errno;
    close(file);
    if (written != static_cast<ssize_t>(bytes.size())) {
        Raise(number, "cannot write", path);
    }
}

std::string HexadecimalDigits() {
    std::random_device random;
    char digits[9];
    std::snprintf(digits, sizeof digits, "%X", random() & 0xFFFFFFu);
    return digits;
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

// Sees to it that a file's bytes are on the disk. Gives back the error number, 0 for none.
int FlushToDisk(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return errno;
    }
    const int number = fsync(file) == 0 ? 0 : errno;
    close(file);
    return number;
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

void AppendToFile(const std::string& path, const std::string& bytes) { WriteAt(path, bytes, O_WRONLY | O_APPEND); }

void DuplicateFile(const std::string& source, const std::string& target) {
    const std::string folder = target.substr(0, target.rfind(PathSeparator) + 1);
    const std::string beside = folder + "IMG" + HexadecimalDigits() + ".tmp"; // short whatever the target's name
    std::error_code error = std::make_error_code(std::errc::no_such_file_or_directory);
    if (!target.empty() && std::filesystem::copy_file(source, beside, error)) {
        error.assign(FlushToDisk(beside), std::generic_category());
        if (!error) {
            std::filesystem::rename(beside, target, error);
        }
    }
    if (error) {
        unlink(beside.c_str());
        Raise(error.value(), "cannot copy to", target);
    }
}

std::string ReadFileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        Raise(errno, "cannot read", path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
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
