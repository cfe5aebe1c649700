// How our own saves know on Linux that a picture is being read: readers hold an advisory lock, and savers ask for it.
#include "imaginglibrary/files/filelock_linux.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace imaginglibrary {

namespace {

// Of the whole file, and of the open file rather than the process, which may have it open twice.
struct flock WholeFile(short kind) {
    struct flock lock {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

bool LockForReading(int descriptor) {
    struct flock lock = WholeFile(F_RDLCK);
    return fcntl(descriptor, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

bool IsLocked(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return errno != EACCES && errno != ENOENT;
    }
    struct flock lock = WholeFile(F_WRLCK);
    const bool isLocked = fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    close(descriptor);
    return isLocked;
}

} // namespace imaginglibrary
