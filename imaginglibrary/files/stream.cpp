// Moving about in streams, and what their answers mean.
#include "imaginglibrary/files/stream.h"

#include <algorithm>

namespace imaginglibrary {

namespace {
constexpr std::size_t LargestStep = 1u << 20;
constexpr std::uint64_t Nowhere = UINT64_MAX; // after a failure, so that the next move is made for certain
} // namespace

StreamCursor::StreamCursor(Stream* stream) : stream_(stream) {
    stream_->functions->addReference(stream_);
    canSeek_ = stream_->functions->seek(stream_, 0, SeekOrigin::Current, &start_) >= 0;
    start_ = canSeek_ ? start_ : 0;
}

StreamCursor::~StreamCursor() { stream_->functions->release(stream_); }

Result<std::uint64_t> StreamCursor::Size() {
    std::uint64_t end = 0;
    position_ = Nowhere;
    if (!canSeek_ || stream_->functions->seek(stream_, 0, SeekOrigin::End, &end) < 0) {
        return Status::Win32Error;
    }
    return end > start_ ? end - start_ : 0;
}

bool StreamCursor::MoveTo(std::uint64_t position) {
    if (position == position_) {
        return true;
    }
    const bool isMoved = canSeek_ && stream_->functions->seek(stream_, static_cast<std::int64_t>(start_ + position),
                                                              SeekOrigin::Start, nullptr) >= 0;
    position_ = isMoved ? position : Nowhere;
    return isMoved;
}

Result<std::size_t> StreamCursor::ReadAt(std::uint64_t position, void* buffer, std::size_t count) {
    if (!MoveTo(position)) {
        return Status::Win32Error;
    }
    auto* to = static_cast<std::uint8_t*>(buffer);
    std::size_t done = 0;
    while (done < count) {
        const auto wanted = static_cast<std::uint32_t>(std::min(count - done, LargestStep));
        std::uint32_t step = 0;
        if (stream_->functions->read(stream_, to + done, wanted, &step) < 0 || step > wanted) {
            position_ = Nowhere;
            return Status::Win32Error;
        }
        if (step == 0) {
            break;
        }
        done += step;
        position_ += step;
    }
    return done;
}

Status StreamCursor::WriteAt(std::uint64_t position, const void* bytes, std::size_t count) {
    if (!MoveTo(position)) {
        return Status::Win32Error;
    }
    const auto* from = static_cast<const std::uint8_t*>(bytes);
    while (count > 0) {
        const auto wanted = static_cast<std::uint32_t>(std::min(count, LargestStep));
        std::uint32_t step = 0;
        const StreamResult result = stream_->functions->write(stream_, from, wanted, &step);
        if (result < 0 || step == 0 || step > wanted) {
            position_ = Nowhere;
            return result == StreamOutOfMemory ? Status::OutOfMemory : Status::Win32Error;
        }
        from += step;
        count -= step;
        position_ += step;
    }
    return Status::Ok;
}

} // namespace imaginglibrary
