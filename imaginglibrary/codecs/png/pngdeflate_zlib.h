// Compressing by zlib.
#pragma once

#include "imaginglibrary/codecs/png/pngdeflate.h"

namespace imaginglibrary {

// As Deflate.
void DeflateByZlib(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
                   std::vector<std::uint8_t>& to);

} // namespace imaginglibrary
