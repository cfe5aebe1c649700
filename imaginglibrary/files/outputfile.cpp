// What writing files has in common on all systems: gathering small pieces, and the failure that stays.
#include "imaginglibrary/files/outputfile.h"

#include <algorithm>
#include <new>

namespace imaginglibrary {

namespace {
constexpr std::size_t BufferBytes = 65536;
}

Status OutputFile::WriteAt(std::uint64_t offset, const void* bytes, std::size_t count) {
    if (failure_ != Status::Ok || count == 0) {
        return failure_;
    }
    if (offset != bufferStart_ + buffer_.size() || buffer_.size() + count > BufferBytes) {
        if (Flush() != Status::Ok) {
            return failure_;
        }
        bufferStart_ = offset;
    }
    if (count >= BufferBytes) {
        failure_ = DoWriteAt(offset, bytes, count);
        bufferStart_ = offset + count;
    } else {
        Gather(static_cast<const std::uint8_t*>(bytes), count);
    }
    size_ = std::max<std::uint64_t>(size_, offset + count);
    return failure_;
}

// Codec libraries pass over single failures, so this one stays too.
void OutputFile::Gather(const std::uint8_t* bytes, std::size_t count) {
    try {
        buffer_.insert(buffer_.end(), bytes, bytes + count);
    } catch (const std::bad_alloc&) {
        failure_ = Status::OutOfMemory;
    }
}

Result<std::size_t> OutputFile::ReadAt(std::uint64_t offset, void* buffer, std::size_t count) {
    if (Flush() != Status::Ok) {
        return failure_;
    }
    return DoReadAt(offset, buffer, count);
}

Status OutputFile::Commit() {
    if (Flush() == Status::Ok) {
        failure_ = DoCommit();
    }
    return failure_;
}

Status OutputFile::Flush() {
    if (failure_ == Status::Ok && !buffer_.empty()) {
        failure_ = DoWriteAt(bufferStart_, buffer_.data(), buffer_.size());
        bufferStart_ += buffer_.size();
        buffer_.clear();
    }
    return failure_;
}

} // namespace imaginglibrary
