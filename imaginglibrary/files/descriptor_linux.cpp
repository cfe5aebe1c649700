// What reading and writing files have in common on Linux.
#include "imaginglibrary/files/descriptor_linux.h"

#include <cerrno>
#include <unistd.h>

namespace imaginglibrary {

Result<std::size_t> ReadDescriptorAt(int descriptor, std::uint64_t offset, void* buffer, std::size_t count) {
    auto* to = static_cast<char*>(buffer);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t step = pread(descriptor, to + done, count - done, static_cast<off_t>(offset + done));
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

} // namespace imaginglibrary
