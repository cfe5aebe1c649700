// A file that appears whole or not at all.
#include "platform/newfile_linux.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <random>
#include <unistd.h>
#include <utility>

namespace lumbrix {

namespace {

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Where a chain of symbolic links ends, whether something is there or not; nothing where it does not end.
std::optional<std::string> BehindLinks(std::filesystem::path path) {
    constexpr int MostLinks = 40; // that the system itself follows
    for (int i = 0; i <= MostLinks; ++i) {
        std::error_code error;
        const std::filesystem::path next = read_symlink(path, error);
        if (error) {
            return path.string();
        }
        path = path.parent_path() / next;
    }
    return std::nullopt;
}

// Unnamed files get their names through this folder, and not every file system has them.
int OpenUnnamed(const std::string& folder, mode_t permissions) {
    if (access("/proc/self/fd", X_OK) != 0) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, permissions);
}

} // namespace

std::string HexadecimalDigits() {
    std::random_device random;
    char digits[9];
    std::snprintf(digits, sizeof digits, "%X", random() & 0xFFFFFFu);
    return digits;
}

std::string NameBeside(const std::string& path) { return FolderOf(path) + "IMG" + HexadecimalDigits() + ".tmp"; }

int WriteAllTo(int file, const void* bytes, std::size_t count) {
    const auto* from = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t step = write(file, from, count);
        if (step > 0) {
            from += step;
            count -= static_cast<std::size_t>(step);
        } else if (step == 0 || errno != EINTR) {
            return step == 0 ? EIO : errno;
        }
    }
    return 0;
}

NewFile::NewFile(const std::string& target) : target_(target) {}

NewFile::~NewFile() {
    if (file_ >= 0) {
        close(file_);
    }
    if (!name_.empty()) {
        unlink(name_.c_str());
    }
}

int NewFile::Open(mode_t permissions) {
    if (target_.empty()) {
        return ENOENT;
    }
    std::optional<std::string> behind = BehindLinks(target_);
    if (!behind) {
        return ELOOP;
    }
    target_ = *std::move(behind);
    file_ = OpenUnnamed(FolderOf(target_), permissions);
    if (file_ < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        std::string name = NameBeside(target_);
        file_ = open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permissions);
        if (file_ >= 0) {
            name_ = std::move(name);
        }
    }
    if (file_ < 0) {
        return errno;
    }
    BecomeLikeTheTarget();
    return 0;
}

void NewFile::BecomeLikeTheTarget() {
    struct stat replaced {};
    if (stat(target_.c_str(), &replaced) != 0 || !S_ISREG(replaced.st_mode)) {
        return;
    }
    constexpr uid_t Unchanged = static_cast<uid_t>(-1);
    const bool hasOwner = fchown(file_, replaced.st_uid, replaced.st_gid) == 0;
    if (!hasOwner) {
        (void)!fchown(file_, Unchanged, replaced.st_gid);
    }
    (void)!fchmod(file_, replaced.st_mode & (hasOwner ? 07777 : 0777));
}

int NewFile::Append(const void* bytes, std::size_t count) { return WriteAllTo(file_, bytes, count); }

int NewFile::GiveName() {
    std::string name = NameBeside(target_);
    const std::string self = "/proc/self/fd/" + std::to_string(file_);
    if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) {
        return errno;
    }
    name_ = std::move(name);
    return 0;
}

int NewFile::Commit() {
    if (fdatasync(file_) != 0) {
        return errno;
    }
    if (const int error = name_.empty() ? GiveName() : 0; error != 0) {
        return error;
    }
    if (close(std::exchange(file_, -1)) != 0 || rename(name_.c_str(), target_.c_str()) != 0) {
        return errno;
    }
    name_.clear();
    return 0;
}

} // namespace lumbrix
