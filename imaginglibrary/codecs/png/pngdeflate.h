// Compressing by deflate, one band of a picture at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace imaginglibrary {

enum class Effort {
    Quick,    // far quicker than Thorough on what hardly repeats itself, and little larger
    Thorough, // far smaller than Quick on what often repeats itself, and not much slower
    Utmost,   // as small as it gets, and many times slower
};

// Whether what follows is the same stream's.
enum class Band {
    GoesOn,
    IsLast,
};

// How far back deflate data can refer.
inline constexpr std::size_t DeflateWindow = 1 << 15;

// Appends deflate data of `bytes` to `to`. They end with a whole byte and refer to nothing before them but `history`,
// what ended the band before, DeflateWindow bytes at most. So bands can be compressed at the same time and put behind
// each other. Raises std::bad_alloc.
void Deflate(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
             std::vector<std::uint8_t>& to);

} // namespace imaginglibrary
