// Compressing by zlib.
#include "imaginglibrary/codecs/png/pngdeflate_zlib.h"

#include <new>

#include <zlib.h>

namespace imaginglibrary {

namespace {

// zlib's levels for the two efforts. At the higher one it looks at somewhat more places than it would by itself, which
// makes screenshots smaller and takes little longer; the numbers before that are the level's own.
constexpr int QuickLevel = 1;
constexpr int ThoroughLevel = 6;
constexpr int GoodLength = 8, LazyLength = 16, NiceLength = 128;
constexpr int ThoroughTries = 160;

} // namespace

void DeflateByZlib(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
                   std::vector<std::uint8_t>& to) {
    constexpr int WithoutHeader = -15; // and the largest window
    constexpr int MostMemory = 9;
    constexpr std::size_t FlushBytes = 16; // more than what ends a band that goes on
    const bool isThorough = effort == Effort::Thorough;
    z_stream stream{};
    if (deflateInit2(&stream, isThorough ? ThoroughLevel : QuickLevel, Z_DEFLATED, WithoutHeader, MostMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    if (isThorough) {
        deflateTune(&stream, GoodLength, LazyLength, NiceLength, ThoroughTries);
    }
    deflateSetDictionary(&stream, history.data(), static_cast<uInt>(history.size()));
    const std::size_t before = to.size();
    try {
        to.resize(before + deflateBound(&stream, static_cast<uLong>(bytes.size())) + FlushBytes);
    } catch (const std::bad_alloc&) {
        deflateEnd(&stream);
        throw;
    }
    stream.next_in = const_cast<Bytef*>(bytes.data()); // zlib does not write to it
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = to.data() + before;
    stream.avail_out = static_cast<uInt>(to.size() - before);
    deflate(&stream, band == Band::IsLast ? Z_FINISH : Z_SYNC_FLUSH);
    to.resize(to.size() - stream.avail_out);
    deflateEnd(&stream);
}

} // namespace imaginglibrary
