// What takes the place of the C library's calls on files.
#include "tests/faults/faultyfiles.h"

#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using tests::FileCall;

bool Fails(FileCall call) {
    const int error = tests::ErrorOf(call);
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

// How much of a write is to be done; less than 0 for nothing but a failure.
ssize_t Allowed(std::size_t count) {
    const tests::WriteAllowance allowance = tests::AllowanceFor(count);
    if (allowance.error != 0) {
        errno = allowance.error;
        return -1;
    }
    return static_cast<ssize_t>(allowance.count);
}

} // namespace

#pragma GCC visibility push(default) // for libraries to find
extern "C" {

int openat(int folder, const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t); // has no meaning where it was not given
    va_end(more);
    if ((flags & O_TMPFILE) == O_TMPFILE && tests::lacksUnnamedFiles) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return Fails(FileCall::Open) ? -1 : static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return openat(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return openat(AT_FDCWD, path, flags, mode);
}

ssize_t read(int file, void* buffer, std::size_t count) {
    return Fails(FileCall::Read) ? -1 : syscall(SYS_read, file, buffer, count);
}

ssize_t pread(int file, void* buffer, std::size_t count, off_t offset) {
    return Fails(FileCall::Read) ? -1 : syscall(SYS_pread64, file, buffer, count, offset);
}

ssize_t pread64(int file, void* buffer, std::size_t count, off64_t offset) {
    return pread(file, buffer, count, offset);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    const ssize_t allowed = Allowed(count);
    return allowed < 0 ? -1 : syscall(SYS_write, file, bytes, allowed);
}

ssize_t pwrite(int file, const void* bytes, std::size_t count, off_t offset) {
    const ssize_t allowed = Allowed(count);
    return allowed < 0 ? -1 : syscall(SYS_pwrite64, file, bytes, allowed, offset);
}

ssize_t pwrite64(int file, const void* bytes, std::size_t count, off64_t offset) {
    return pwrite(file, bytes, count, offset);
}

// The standard library copies files by these two.
ssize_t sendfile(int to, int from, off_t* offset, std::size_t count) noexcept {
    const ssize_t allowed = Allowed(count);
    return allowed < 0 ? -1 : syscall(SYS_sendfile, to, from, offset, allowed);
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, std::size_t count, unsigned flags) {
    const ssize_t allowed = Allowed(count);
    return allowed < 0 ? -1 : syscall(SYS_copy_file_range, from, fromOffset, to, toOffset, allowed, flags);
}

int fsync(int file) { return Fails(FileCall::Flush) ? -1 : static_cast<int>(syscall(SYS_fsync, file)); }

int fdatasync(int file) { return Fails(FileCall::Flush) ? -1 : static_cast<int>(syscall(SYS_fdatasync, file)); }

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    return Fails(FileCall::Name) ? -1 : static_cast<int>(syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int close(int file) {
    const bool fails = Fails(FileCall::Close);
    const int error = errno;
    const int result = static_cast<int>(syscall(SYS_close, file));
    if (fails) {
        errno = error;
    }
    return fails ? -1 : result;
}

int rename(const char* from, const char* to) noexcept {
    return Fails(FileCall::Rename) ? -1 : static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}

int unlink(const char* path) noexcept {
    return Fails(FileCall::Remove) ? -1 : static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

} // extern "C"
#pragma GCC visibility pop
