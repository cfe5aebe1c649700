// Bytes in memory in the place of files.
#include "imaging/memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace lumbrix {

namespace {
constexpr std::size_t FirstCapacity = 65536;
constexpr std::uint32_t GatheredAtOnce = 65536;
} // namespace

GrowingMemory::~GrowingMemory() { std::free(data_); }

bool GrowingMemory::Reserve(std::size_t capacity) {
    void* moved = std::realloc(data_, capacity);
    if (moved == nullptr) {
        return false;
    }
    data_ = static_cast<std::uint8_t*>(moved);
    capacity_ = capacity;
    return true;
}

bool GrowingMemory::Resize(std::uint64_t size) {
    if (size > PTRDIFF_MAX) {
        return false;
    }
    const auto wanted = static_cast<std::size_t>(size);
    if (wanted > capacity_ && !Reserve(std::max({wanted, capacity_ + capacity_ / 2, FirstCapacity})) &&
        !Reserve(wanted)) {
        return false;
    }
    if (wanted > size_) {
        std::memset(data_ + size_, 0, wanted - size_);
    }
    size_ = wanted;
    return true;
}

void* GrowingMemory::Release() {
    Reserve(std::max<std::size_t>(size_, 1)); // a block that cannot be made smaller does as it is
    size_ = 0;
    capacity_ = 0;
    return std::exchange(data_, nullptr);
}

StatusValue GatherBytes(const ByteReader& read, GrowingMemory& bytes, std::size_t most) {
    for (;;) {
        const std::size_t before = bytes.Size();
        if (!bytes.Resize(std::uint64_t{before} + GatheredAtOnce)) {
            return OutOfMemory;
        }
        const std::int64_t count = read(bytes.Data() + before, GatheredAtOnce);
        if (count < 0 || count > GatheredAtOnce) {
            return Win32Error;
        }
        bytes.Resize(before + static_cast<std::uint64_t>(count));
        if (bytes.Size() > most) {
            return OutOfMemory;
        }
        if (count == 0) {
            return Done;
        }
    }
}

} // namespace lumbrix
