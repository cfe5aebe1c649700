// Reading on Linux: an advisory shared lock tells our own saves that the file is in use.
#include "imaginglibrary/files/descriptor_linux.h"
#include "imaginglibrary/files/filelock_linux.h"
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/path_linux.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace imaginglibrary {

namespace {

class LinuxInputFile : public InputFile {
  public:
    ~LinuxInputFile() override {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    Status OpenAt(const std::string& path) {
        // Not blocking, for the path may name a pipe that nobody writes to.
        descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (descriptor_ < 0) {
            return errno == ENOENT || errno == ENOTDIR ? Status::FileNotFound : Status::GenericError;
        }
        struct stat facts {};
        const bool isRegular = fstat(descriptor_, &facts) == 0 && S_ISREG(facts.st_mode);
        return isRegular && LockForReading(descriptor_) ? Status::Ok : Status::GenericError;
    }

    // Asks anew each time, for another program may ignore the lock and cut the file short.
    std::uint64_t Size() const override {
        struct stat facts {};
        return fstat(descriptor_, &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
    }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        return ReadDescriptorAt(descriptor_, offset, buffer, count);
    }

  private:
    int descriptor_ = -1;
};

} // namespace

Result<std::shared_ptr<const InputFile>> InputFile::Open(const std::u16string& path) {
    auto file = std::make_shared<LinuxInputFile>();
    if (const Status status = file->OpenAt(PathBytes(path)); status != Status::Ok) {
        return status;
    }
    return std::shared_ptr<const InputFile>(std::move(file));
}

} // namespace imaginglibrary
