// Bytes in memory in the place of files: what is read, and what grows while it is written.
#pragma once

#include "imaging/status.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace lumbrix {

// Bytes that somebody else owns.
struct MemoryBytes {
    const void* data = nullptr;
    std::size_t length = 0;
};

// Bytes that grow, in memory that std::free gives back.
class GrowingMemory {
  public:
    GrowingMemory() = default;
    ~GrowingMemory();
    GrowingMemory(const GrowingMemory&) = delete;
    GrowingMemory& operator=(const GrowingMemory&) = delete;

    std::uint8_t* Data() const { return data_; }
    std::size_t Size() const { return size_; }
    MemoryBytes Bytes() const { return {data_, size_}; }

    // Bytes that are new are zero. False where memory ran out; everything is as before then.
    bool Resize(std::uint64_t size);

    // Hands the bytes over, in memory no larger than they are, and is empty then. Never null: no bytes have memory too.
    // Null where there is none left.
    void* Release();

  private:
    bool Reserve(std::size_t capacity);

    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Puts up to `count` bytes into the buffer and gives back how many: 0 at the end, less than 0 for a failure.
using ByteReader = std::function<std::int64_t(void* buffer, std::uint32_t count)>;

// Most bytes that are read from where one cannot go back, in memory.
inline constexpr std::size_t MostGatheredBytes = sizeof(void*) == 4 ? std::size_t{512} << 20 : std::size_t{1} << 30;

// Reads to the end. Win32Error where the reading fails, OutOfMemory where there is more than `most`, or no memory.
StatusValue GatherBytes(const ByteReader& read, GrowingMemory& bytes, std::size_t most = MostGatheredBytes);

} // namespace lumbrix
