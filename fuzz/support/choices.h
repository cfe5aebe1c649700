// What a fuzzed program does, taken from its input byte by byte.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

// Ends the process where something does not hold that always must, so that the fuzzer keeps the input.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

// The input from its first byte on. Behind its end everything is zero.
class Choices {
  public:
    Choices(const std::uint8_t* bytes, std::size_t count) : bytes_(bytes), left_(count) {}

    bool AtEnd() const { return left_ == 0; }

    std::uint8_t Byte() {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *bytes_++;
    }

    // Little-endian.
    template <class Number> Number Of() {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            number |= std::uint64_t{Byte()} << (8 * i);
        }
        return static_cast<Number>(number);
    }

    // From 0 to `count` - 1; `count` is at most 256.
    std::size_t Below(std::size_t count) { return Byte() % count; }

    bool Coin() { return (Byte() & 1) != 0; }

    // A number that is small most of the time, and anything otherwise.
    std::int32_t Length() {
        const std::uint8_t kind = Byte();
        return kind < 0xF0 ? kind % 80 - 4 : Of<std::int32_t>();
    }

    // Up to `most` bytes of what is left.
    std::string Bytes(std::size_t most) {
        const std::size_t count = std::min(most, left_);
        std::string text(reinterpret_cast<const char*>(bytes_), count);
        bytes_ += count;
        left_ -= count;
        return text;
    }

    std::string Rest() { return Bytes(left_); }

  private:
    const std::uint8_t* bytes_;
    std::size_t left_;
};

} // namespace fuzz
