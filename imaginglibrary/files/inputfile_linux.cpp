// Reading on Linux: an advisory shared lock tells our own saves that the file is in use.
#include "imaginglibrary/files/filelock_linux.h"
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/path_linux.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace imaginglibrary {

namespace {

class LinuxInputFile : public InputFile {
  public:
    explicit LinuxInputFile(int descriptor) : descriptor_(descriptor) {}
    ~LinuxInputFile() override { close(descriptor_); }

    // Asks anew each time, for another program may ignore the lock and cut the file short.
    std::uint64_t Size() const override {
        struct stat facts {};
        return fstat(descriptor_, &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
    }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        auto* to = static_cast<char*>(buffer);
        std::size_t done = 0;
        while (done < count) {
            const ssize_t step = pread(descriptor_, to + done, count - done, static_cast<off_t>(offset + done));
            if (step == 0) {
                break;
            }
            if (step > 0) {
                done += static_cast<std::size_t>(step);
            } else if (errno != EINTR) {
                return Status::Win32Error;
            }
        }
        return done;
    }

  private:
    int descriptor_;
};

} // namespace

Result<std::shared_ptr<const InputFile>> InputFile::Open(const std::u16string& path) {
    // Not blocking, for the path may name a pipe that nobody writes to.
    const int descriptor = open(PathBytes(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return errno == ENOENT || errno == ENOTDIR ? Status::FileNotFound : Status::GenericError;
    }
    std::shared_ptr<const InputFile> file = std::make_shared<LinuxInputFile>(descriptor);
    struct stat facts {};
    if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return Status::GenericError;
    }
    if (!LockForReading(descriptor)) {
        return Status::GenericError;
    }
    return file;
}

} // namespace imaginglibrary
