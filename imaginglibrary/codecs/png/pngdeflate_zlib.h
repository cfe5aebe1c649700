// Compressing by zlib.
#pragma once

#include "imaginglibrary/codecs/png/pngdeflate.h"

namespace imaginglibrary {

// As Deflate; `level` is zlib's.
void DeflateByZlib(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, int level, Band band,
                   std::vector<std::uint8_t>& to);

// zlib's levels for the two efforts.
inline constexpr int QuickZlibLevel = 1;
inline constexpr int ThoroughZlibLevel = 7;

} // namespace imaginglibrary
