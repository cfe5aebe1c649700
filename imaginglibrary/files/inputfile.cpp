// What reading files has in common on all systems.
#include "imaginglibrary/files/inputfile.h"

#include <algorithm>

namespace imaginglibrary {

namespace {
constexpr std::size_t BufferBytes = 32768;
}

Status InputFile::ReadExactlyAt(std::uint64_t offset, void* buffer, std::size_t count) const {
    const auto read = ReadAt(offset, buffer, count);
    if (!read.Ok()) {
        return read.GetStatus();
    }
    return *read == count ? Status::Ok : UndecodableContent;
}

ByteReader::ByteReader(std::shared_ptr<const InputFile> file, std::uint64_t offset)
    : file_(std::move(file)), bufferStart_(offset), buffer_(std::make_unique<std::uint8_t[]>(BufferBytes)) {}

void ByteReader::Seek(std::uint64_t offset) {
    if (offset >= bufferStart_ && offset <= bufferStart_ + filled_) {
        next_ = static_cast<std::size_t>(offset - bufferStart_);
        return;
    }
    bufferStart_ = offset;
    next_ = 0;
    filled_ = 0;
}

bool ByteReader::Refill() {
    bufferStart_ += next_;
    next_ = 0;
    const auto read = file_->ReadAt(bufferStart_, buffer_.get(), BufferBytes);
    filled_ = read.Ok() ? *read : 0;
    if (!read.Ok()) {
        failure_ = read.GetStatus();
    }
    return filled_ != 0;
}

std::size_t ByteReader::Read(void* buffer, std::size_t count) {
    auto* to = static_cast<std::uint8_t*>(buffer);
    std::size_t done = 0;
    while (done < count) {
        if (next_ == filled_ && !Refill()) {
            break;
        }
        const std::size_t step = std::min(count - done, filled_ - next_);
        std::copy_n(buffer_.get() + next_, step, to + done);
        next_ += step;
        done += step;
    }
    return done;
}

int ByteReader::ReadByte() {
    if (next_ == filled_ && !Refill()) {
        return -1;
    }
    return buffer_[next_++];
}

} // namespace imaginglibrary
