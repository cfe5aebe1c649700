// Inflating by zlib.
#include "imaginglibrary/codecs/png/pnginflate.h"

#include <new>

#include <zlib.h>

namespace imaginglibrary {

struct Inflater::Stream {
    z_stream stream{};
};

Inflater::Inflater() : stream_(std::make_unique<Stream>()) {
    if (inflateInit(&stream_->stream) != Z_OK) {
        throw std::bad_alloc();
    }
}

Inflater::~Inflater() { inflateEnd(&stream_->stream); }

InflateState Inflater::Inflate(std::span<const std::uint8_t>& from, std::span<std::uint8_t>& to) {
    z_stream& stream = stream_->stream;
    stream.next_in = const_cast<Bytef*>(from.data()); // it is only read
    stream.avail_in = static_cast<uInt>(from.size());
    stream.next_out = to.data();
    stream.avail_out = static_cast<uInt>(to.size());
    const int result = inflate(&stream, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_BUF_ERROR && result != Z_STREAM_END) {
        return InflateState::Broken;
    }
    from = from.last(stream.avail_in);
    to = to.last(stream.avail_out);
    return result == Z_STREAM_END ? InflateState::Ended : InflateState::GoesOn;
}

} // namespace imaginglibrary
