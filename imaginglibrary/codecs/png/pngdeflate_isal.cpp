// Compressing with ISA-L's vector code, where that is to be had, and by zlib where matches count.
#include "imaginglibrary/codecs/png/pngdeflate_zlib.h"

#include <memory>

#include <isa-l.h>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t Level = 3;
constexpr std::size_t LevelBytes = ISAL_DEF_LVL3_DEFAULT;

// Its stream and the memory of its level, which are large.
struct Compressor {
    isal_zstream stream;
    std::uint8_t levelMemory[LevelBytes] = {}; // what is in it is asked before it is written
};

void DeflateQuickly(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Band band,
                    std::vector<std::uint8_t>& to) {
    const auto compressor = std::make_unique_for_overwrite<Compressor>();
    isal_zstream& stream = compressor->stream;
    isal_deflate_init(&stream);
    stream.level = Level;
    stream.level_buf = compressor->levelMemory;
    stream.level_buf_size = LevelBytes;
    stream.flush = SYNC_FLUSH;
    stream.end_of_stream = band == Band::IsLast ? 1 : 0;
    if (!history.empty()) {
        isal_deflate_set_dict(&stream, const_cast<std::uint8_t*>(history.data()),
                              static_cast<std::uint32_t>(history.size())); // it is only read
    }
    stream.next_in = const_cast<std::uint8_t*>(bytes.data());
    stream.avail_in = static_cast<std::uint32_t>(bytes.size());
    // It says itself when it needs more room.
    do {
        const std::size_t before = to.size();
        const std::size_t room = bytes.size() / 2 + 4096;
        to.resize(before + room);
        stream.next_out = to.data() + before;
        stream.avail_out = static_cast<std::uint32_t>(room);
        isal_deflate(&stream);
        to.resize(to.size() - stream.avail_out);
    } while (stream.avail_out == 0);
}

} // namespace

void Deflate(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> history, Effort effort, Band band,
             std::vector<std::uint8_t>& to) {
    if (effort == Effort::Quick) {
        return DeflateQuickly(bytes, history, band, to);
    }
    DeflateByZlib(bytes, history, effort, band, to);
}

} // namespace imaginglibrary
