// Compressing by zlib alone.
#include "imaginglibrary/codecs/png/pngdeflate_zlib.h"

namespace imaginglibrary {

void Deflate(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
             std::vector<std::uint8_t>& to) {
    DeflateByZlib(bytes, history, effort, band, to);
}

} // namespace imaginglibrary
