// Streams of bytes that callers hand in: objects of the platform's component model, with the functions of IStream.
#pragma once

#include "imaginglibrary/core/guid.h"
#include "imaginglibrary/core/status.h"

#include <cstddef>
#include <cstdint>

#ifdef _WIN32
#define STREAM_CALL __stdcall
#else
#define STREAM_CALL
#endif

namespace imaginglibrary {

struct Stream;

// Negative for a failure.
using StreamResult = std::int32_t;

// What a stream answers that has no memory left.
inline constexpr auto StreamOutOfMemory = static_cast<StreamResult>(0x8007000E);

// From where a position is counted.
enum class SeekOrigin : std::uint32_t { Start = 0, Current = 1, End = 2 };

// In the order of the component model's table. On every system the first argument is the stream itself; places for
// answers may be null but for that of queryInterface.
struct StreamFunctions {
    StreamResult(STREAM_CALL* queryInterface)(Stream*, const Guid* id, void** object);
    std::uint32_t(STREAM_CALL* addReference)(Stream*);
    std::uint32_t(STREAM_CALL* release)(Stream*);
    StreamResult(STREAM_CALL* read)(Stream*, void* buffer, std::uint32_t count, std::uint32_t* read);
    StreamResult(STREAM_CALL* write)(Stream*, const void* bytes, std::uint32_t count, std::uint32_t* written);
    StreamResult(STREAM_CALL* seek)(Stream*, std::int64_t move, SeekOrigin origin, std::uint64_t* position);
    StreamResult(STREAM_CALL* setSize)(Stream*, std::uint64_t size);
    StreamResult(STREAM_CALL* copyTo)(Stream*, Stream* target, std::uint64_t count, std::uint64_t* read,
                                      std::uint64_t* written);
    StreamResult(STREAM_CALL* commit)(Stream*, std::uint32_t flags);
    StreamResult(STREAM_CALL* revert)(Stream*);
    StreamResult(STREAM_CALL* lockRegion)(Stream*, std::uint64_t offset, std::uint64_t count, std::uint32_t kind);
    StreamResult(STREAM_CALL* unlockRegion)(Stream*, std::uint64_t offset, std::uint64_t count, std::uint32_t kind);
    StreamResult(STREAM_CALL* stat)(Stream*, void* facts, std::uint32_t flags);
    StreamResult(STREAM_CALL* clone)(Stream*, Stream** clone);
};

struct Stream {
    const StreamFunctions* functions;
};

// Keeps a stream alive, and moves about in it from where it stood at first: that is position 0 here. Not for several
// threads at once.
class StreamCursor {
  public:
    explicit StreamCursor(Stream* stream);
    ~StreamCursor();
    StreamCursor(const StreamCursor&) = delete;
    StreamCursor& operator=(const StreamCursor&) = delete;

    // Whether the stream can be asked where it stands. One that cannot is only read or written on and on.
    bool CanSeek() const { return canSeek_; }

    // The bytes behind the first position; Win32Error where the stream cannot tell.
    Result<std::uint64_t> Size();

    // Reads up to `count` bytes and gives back how many; fewer only at the end.
    Result<std::size_t> ReadAt(std::uint64_t position, void* buffer, std::size_t count);

    // OutOfMemory where the stream says that this is why it failed, else Win32Error.
    Status WriteAt(std::uint64_t position, const void* bytes, std::size_t count);

    bool MoveTo(std::uint64_t position);

  private:
    Stream* stream_;
    std::uint64_t start_ = 0;
    std::uint64_t position_ = 0; // where the stream stands now
    bool canSeek_ = false;
};

} // namespace imaginglibrary
