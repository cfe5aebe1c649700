// Compressing by zlib.
#include "imaginglibrary/codecs/png/pngdeflate_zlib.h"

#include <new>

#include <zlib.h>

namespace imaginglibrary {

namespace {

constexpr int LevelOf(Effort effort) { return effort == Effort::Quick ? 1 : effort == Effort::Thorough ? 6 : 9; }

// zlib looks at somewhat more places than it would by itself at that level, which makes screenshots smaller and takes
// little longer; the numbers before that are the level's own.
void LookFurther(z_stream& stream) {
    constexpr int GoodLength = 8, LazyLength = 16, NiceLength = 128, Tries = 160;
    deflateTune(&stream, GoodLength, LazyLength, NiceLength, Tries);
}

} // namespace

void DeflateByZlib(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
                   std::vector<std::uint8_t>& to) {
    constexpr int WithoutHeader = -15; // and the largest window
    constexpr int MostMemory = 9;
    constexpr std::size_t FlushBytes = 16; // more than what ends a band that goes on
    z_stream stream{};
    if (deflateInit2(&stream, LevelOf(effort), Z_DEFLATED, WithoutHeader, MostMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    if (effort == Effort::Thorough) {
        LookFurther(stream);
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
