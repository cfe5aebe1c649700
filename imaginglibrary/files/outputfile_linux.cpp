// Writing on Linux: an unnamed file in the target's folder, linked and renamed into place at the end.
#include "imaginglibrary/files/outputfile.h"

#include "imaginglibrary/files/descriptor_linux.h"
#include "imaginglibrary/files/filelock_linux.h"
#include "imaginglibrary/files/path_linux.h"
#include "imaginglibrary/files/scratchfile_linux.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace imaginglibrary {

namespace {

// Where a chain of symbolic links ends, whether something is there or not; nothing where it does not end.
std::optional<std::string> BehindLinks(std::string path) {
    constexpr int MostLinks = 40; // that the system itself follows
    for (int i = 0; i <= MostLinks; ++i) {
        char link[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), link, sizeof link);
        if (length < 0) {
            return path;
        }
        const std::string next(link, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : FolderOf(path).append("/").append(next);
    }
    return std::nullopt;
}

// Unnamed files get their names through this. Where it is not mounted, a file has a name from the start.
bool CanNameUnnamedFiles() { return access("/proc/self/fd", X_OK) == 0; }

class LinuxOutputFile : public OutputFile {
  public:
    LinuxOutputFile(std::string target, CommitGate gate) : target_(std::move(target)), gate_(std::move(gate)) {}

    ~LinuxOutputFile() override {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        if (!scratchName_.empty()) {
            unlink(scratchName_.c_str());
        }
    }

    // `replaced` describes the file that stands at the target, if any; the new one gets its permissions and, where that
    // is allowed, its owner.
    Status Open(const std::optional<struct stat>& replaced) {
        const bool canBeUnnamed = CanNameUnnamedFiles();
        if (canBeUnnamed) {
            descriptor_ = open(FolderOf(target_).c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
        }
        if (!canBeUnnamed || (descriptor_ < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL))) {
            scratchName_ = ScratchNameBeside(target_);
            descriptor_ = open(scratchName_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        }
        if (descriptor_ < 0) {
            scratchName_.clear();
            return Status::GenericError;
        }
        if (replaced) {
            replaces_ = true;
            BecomeLike(*replaced);
        }
        return Status::Ok;
    }

  protected:
    Status DoWriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
        const auto* from = static_cast<const char*>(bytes);
        while (count > 0) {
            const ssize_t step = pwrite(descriptor_, from, count, static_cast<off_t>(offset));
            if (step > 0) {
                from += step;
                offset += static_cast<std::uint64_t>(step);
                count -= static_cast<std::size_t>(step);
            } else if (step == 0 || errno != EINTR) {
                return Status::Win32Error;
            }
        }
        return Status::Ok;
    }

    Result<std::size_t> DoReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        return ReadDescriptorAt(descriptor_, offset, buffer, count);
    }

    Status DoCommit() override {
        // Where an older picture is at stake, the new one must be on the disk before it takes that one's name.
        if (replaces_ && !(MayGoOn(CommitStep::Flush) && fdatasync(descriptor_) == 0)) {
            return Status::Win32Error;
        }
        if (scratchName_.empty() && !GiveName()) {
            return Status::Win32Error;
        }
        const bool isClosed = close(std::exchange(descriptor_, -1)) == 0 && MayGoOn(CommitStep::Close);
        if (!isClosed || !MayGoOn(CommitStep::Replace) || rename(scratchName_.c_str(), target_.c_str()) != 0) {
            return Status::Win32Error;
        }
        scratchName_.clear();
        SweepBeside(target_);
        return Status::Ok;
    }

  private:
    void BecomeLike(const struct stat& replaced) {
        constexpr uid_t Unchanged = static_cast<uid_t>(-1);
        const bool hasOwner = fchown(descriptor_, replaced.st_uid, replaced.st_gid) == 0;
        if (!hasOwner) {
            (void)!fchown(descriptor_, Unchanged, replaced.st_gid);
        }
        (void)!fchmod(descriptor_, replaced.st_mode & (hasOwner ? 07777 : 0777));
    }

    bool MayGoOn(CommitStep step) const { return !gate_ || gate_(step); }

    bool GiveName() {
        std::string name = ScratchNameBeside(target_);
        const std::string self = "/proc/self/fd/" + std::to_string(descriptor_);
        if (!MayGoOn(CommitStep::Name) ||
            linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) {
            return false;
        }
        scratchName_ = std::move(name);
        return true;
    }

    std::string target_;
    CommitGate gate_;
    std::string scratchName_; // empty while the file has no name
    int descriptor_ = -1;
    bool replaces_ = false;
};

} // namespace

Result<std::unique_ptr<OutputFile>> OutputFile::Create(const std::u16string& target, CommitGate gate) {
    const std::optional<std::string> path = BehindLinks(PathBytes(target));
    if (!path || path->empty() || path->back() == '/') {
        return Status::GenericError;
    }
    std::optional<struct stat> replaced;
    if (struct stat facts{}; stat(path->c_str(), &facts) == 0) {
        if (!S_ISREG(facts.st_mode) || access(path->c_str(), W_OK) != 0 || IsLocked(*path)) {
            return Status::GenericError;
        }
        replaced = facts;
    } else if (errno != ENOENT) { // a name that no file can have, for one
        return Status::GenericError;
    }
    auto file = std::make_unique<LinuxOutputFile>(*path, std::move(gate));
    if (const Status status = file->Open(replaced); status != Status::Ok) {
        return status;
    }
    return std::unique_ptr<OutputFile>(std::move(file));
}

} // namespace imaginglibrary
