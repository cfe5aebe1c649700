// Inflating zlib streams piece by piece.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace imaginglibrary {

enum class InflateState {
    GoesOn,
    Ended,  // the stream, with the right checksum
    Broken, // or needs a dictionary
};

// One stream. Belongs to one thread at a time. Codes that leave some bits without a meaning, which no encoder makes,
// are Broken to zlib but not to ISA-L, where that does the work.
class Inflater {
  public:
    Inflater(); // raises std::bad_alloc
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    // Takes what it can off the front of `from`, which may be more than it needs for what it gives, and what it fills
    // off the front of `to`; nothing where it is Broken. While it GoesOn and does neither, it lacks one or the other.
    // Must not be asked again once it is Ended or Broken.
    InflateState Inflate(std::span<const std::uint8_t>& from, std::span<std::uint8_t>& to);

  private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
};

} // namespace imaginglibrary
