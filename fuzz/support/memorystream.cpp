// A stream of the component model over bytes in memory.
#include "fuzz/support/memorystream.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

using namespace imaginglibrary;

namespace {

constexpr StreamResult Done = 0;
constexpr StreamResult Failed = -1;
constexpr std::size_t MostBytes = std::size_t{64} << 20;

} // namespace

const StreamFunctions MemoryStream::Functions = {.queryInterface = nullptr,
                                                 .addReference = AddReference,
                                                 .release = Release,
                                                 .read = Read,
                                                 .write = Write,
                                                 .seek = Seek,
                                                 .setSize = nullptr,
                                                 .copyTo = nullptr,
                                                 .commit = nullptr,
                                                 .revert = nullptr,
                                                 .lockRegion = nullptr,
                                                 .unlockRegion = nullptr,
                                                 .stat = nullptr,
                                                 .clone = nullptr};

MemoryStream::MemoryStream(std::string bytes) : Stream{&Functions}, bytes_(std::move(bytes)) {}

StreamResult MemoryStream::Read(Stream* stream, void* buffer, std::uint32_t count, std::uint32_t* read) {
    auto& self = *static_cast<MemoryStream*>(stream);
    const std::size_t start = std::min(self.position_, self.bytes_.size());
    const std::size_t there = std::min<std::size_t>(count, self.bytes_.size() - start);
    std::memcpy(buffer, self.bytes_.data() + start, there);
    self.position_ += there;
    if (read != nullptr) {
        *read = static_cast<std::uint32_t>(there);
    }
    return Done;
}

StreamResult MemoryStream::Write(Stream* stream, const void* bytes, std::uint32_t count, std::uint32_t* written) {
    auto& self = *static_cast<MemoryStream*>(stream);
    if (self.position_ > MostBytes || count > MostBytes - self.position_) {
        return Failed;
    }
    self.bytes_.resize(std::max(self.bytes_.size(), self.position_ + count));
    std::memcpy(self.bytes_.data() + self.position_, bytes, count);
    self.position_ += count;
    if (written != nullptr) {
        *written = count;
    }
    return Done;
}

StreamResult MemoryStream::Seek(Stream* stream, std::int64_t move, SeekOrigin origin, std::uint64_t* position) {
    auto& self = *static_cast<MemoryStream*>(stream);
    std::int64_t from = 0;
    if (origin == SeekOrigin::Current) {
        from = static_cast<std::int64_t>(self.position_);
    } else if (origin == SeekOrigin::End) {
        from = static_cast<std::int64_t>(self.bytes_.size());
    }
    if (move < -from) {
        return Failed;
    }
    self.position_ = static_cast<std::size_t>(from + move);
    if (position != nullptr) {
        *position = self.position_;
    }
    return Done;
}

std::uint32_t MemoryStream::AddReference(Stream* stream) { return ++static_cast<MemoryStream*>(stream)->references_; }

std::uint32_t MemoryStream::Release(Stream* stream) { return --static_cast<MemoryStream*>(stream)->references_; }

} // namespace fuzz
