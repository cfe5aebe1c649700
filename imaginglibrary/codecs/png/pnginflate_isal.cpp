// Inflating with ISA-L's vector code, where that is to be had.
#include "imaginglibrary/codecs/png/pnginflate.h"

#include <isa-l.h>

namespace imaginglibrary {

struct Inflater::Stream {
    inflate_state state;
};

Inflater::Inflater() : stream_(std::make_unique_for_overwrite<Stream>()) {
    isal_inflate_init(&stream_->state);
    stream_->state.crc_flag = ISAL_ZLIB;
}

Inflater::~Inflater() = default;

InflateState Inflater::Inflate(std::span<const std::uint8_t>& from, std::span<std::uint8_t>& to) {
    inflate_state& state = stream_->state;
    state.next_in = const_cast<std::uint8_t*>(from.data()); // it is only read
    state.avail_in = static_cast<std::uint32_t>(from.size());
    state.next_out = to.data();
    state.avail_out = static_cast<std::uint32_t>(to.size());
    if (isal_inflate(&state) != ISAL_DECOMP_OK) {
        return InflateState::Broken; // and what is left may be one byte less than nothing
    }
    from = from.last(state.avail_in);
    to = to.last(state.avail_out);
    return state.block_state == ISAL_BLOCK_FINISH ? InflateState::Ended : InflateState::GoesOn;
}

} // namespace imaginglibrary
