// Inflating zlib streams in pieces of any size, sound ones and broken ones.
#include "imaginglibrary/codecs/png/pnginflate.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include <zlib.h>

namespace {

using namespace imaginglibrary;

using Octets = std::vector<std::uint8_t>;

// What repeats itself, near and at the window's end, between what does not.
Octets MadeUp(std::size_t count) {
    std::mt19937 random(3);
    Octets bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned kind = i / 1000 % 4;
        bytes[i] = kind == 0 && i >= 32768 ? bytes[i - 32768]
                   : kind == 1             ? static_cast<std::uint8_t>(random())
                   : kind == 2             ? static_cast<std::uint8_t>(random() % 4)
                                           : static_cast<std::uint8_t>(i / 50);
    }
    return bytes;
}

Octets ZlibStream(const Octets& bytes, int level = 6, int strategy = Z_DEFAULT_STRATEGY) {
    z_stream stream{};
    deflateInit2(&stream, level, Z_DEFLATED, 15, 8, strategy);
    Octets deflated(deflateBound(&stream, static_cast<uLong>(bytes.size())));
    stream.next_in = const_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = deflated.data();
    stream.avail_out = static_cast<uInt>(deflated.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    deflated.resize(stream.total_out);
    deflateEnd(&stream);
    return deflated;
}

struct InPieces {
    Octets bytes;
    InflateState state = InflateState::GoesOn;
};

// Until it ends, breaks or lacks something.
InPieces InflateInPieces(const Octets& deflated, std::size_t inputPiece, std::size_t outputPiece) {
    Inflater inflater;
    InPieces inflated;
    Octets output(outputPiece);
    std::size_t given = 0;
    std::span<const std::uint8_t> from;
    while (inflated.state == InflateState::GoesOn) {
        if (from.empty()) {
            from = std::span(deflated).subspan(given, std::min(inputPiece, deflated.size() - given));
            given += from.size();
        }
        std::span<std::uint8_t> to(output);
        const std::size_t before = from.size();
        inflated.state = inflater.Inflate(from, to);
        inflated.bytes.insert(inflated.bytes.end(), output.begin(), output.end() - static_cast<long>(to.size()));
        if (to.size() == output.size() && from.size() == before && given == deflated.size()) {
            break;
        }
    }
    return inflated;
}

TEST(Inflating, GivesBackWhatWasDeflatedHoweverItIsCut) {
    const Octets bytes = MadeUp(150000);
    const Octets deflated = ZlibStream(bytes);
    for (const std::size_t inputPiece : {1u, 7u, 1000u, 8192u, 1000000u}) {
        for (const std::size_t outputPiece : {1u, 301u, 65536u, 150000u, 150001u}) {
            const InPieces inflated = InflateInPieces(deflated, inputPiece, outputPiece);
            ASSERT_EQ(inflated.bytes, bytes) << inputPiece << ", " << outputPiece;
            EXPECT_EQ(inflated.state, InflateState::Ended) << inputPiece << ", " << outputPiece;
        }
    }
}

TEST(Inflating, ReadsEveryKindOfBlock) {
    const Octets bytes = MadeUp(100000);
    for (const int level : {0, 1, 9}) {
        for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FIXED, Z_HUFFMAN_ONLY, Z_RLE}) {
            const InPieces inflated = InflateInPieces(ZlibStream(bytes, level, strategy), 4096, 5000);
            EXPECT_EQ(inflated.bytes, bytes) << level << ", " << strategy;
            EXPECT_EQ(inflated.state, InflateState::Ended);
        }
    }
}

TEST(Inflating, ReadsAStreamOfNothing) {
    const InPieces inflated = InflateInPieces(ZlibStream({}), 100, 100);
    EXPECT_EQ(inflated.bytes, Octets());
    EXPECT_EQ(inflated.state, InflateState::Ended);
}

TEST(Inflating, EndsWithTheChecksumOnly) {
    const Octets bytes = MadeUp(5000);
    const Octets deflated = ZlibStream(bytes);
    for (std::size_t missing = 1; missing <= 8; ++missing) {
        const Octets cut(deflated.begin(), deflated.end() - static_cast<long>(missing));
        EXPECT_EQ(InflateInPieces(cut, 100000, 10000).state, InflateState::GoesOn) << missing;
        EXPECT_EQ(InflateInPieces(cut, 1, 10000).state, InflateState::GoesOn) << missing;
    }
}

TEST(Inflating, TakesAWrongChecksumForBroken) {
    const Octets deflated = ZlibStream(MadeUp(5000));
    for (std::size_t i = 1; i <= 4; ++i) {
        Octets damaged = deflated;
        damaged[damaged.size() - i] ^= 0x10;
        EXPECT_EQ(InflateInPieces(damaged, 100000, 10000).state, InflateState::Broken) << i;
        EXPECT_EQ(InflateInPieces(damaged, 1, 10000).state, InflateState::Broken) << i;
    }
}

TEST(Inflating, PassesOverWhatStandsBehindTheStream) {
    const Octets bytes = MadeUp(5000);
    Octets deflated = ZlibStream(bytes);
    deflated.insert(deflated.end(), 1000, 0xFF);
    const InPieces inflated = InflateInPieces(deflated, 100000, 10000);
    EXPECT_EQ(inflated.bytes, bytes);
    EXPECT_EQ(inflated.state, InflateState::Ended);
}

TEST(Inflating, TakesWhatIsNoDeflateForBroken) {
    EXPECT_EQ(InflateInPieces({0x78, 0x01, 0x07, 0, 0, 0, 0, 0}, 100, 100).state,
              InflateState::Broken); // no such block
    EXPECT_EQ(InflateInPieces({0x78, 0x01, 0x01, 1, 0, 1, 0, 7}, 100, 100).state, InflateState::Broken); // its length
    EXPECT_EQ(InflateInPieces({0x78, 0x02, 0x03, 0, 0, 0, 0, 1}, 100, 100).state, InflateState::Broken); // the header
    EXPECT_EQ(InflateInPieces({0x79, 0x18, 0x03, 0, 0, 0, 0, 1}, 100, 100).state, InflateState::Broken); // the method
}

// The last code ends behind the input, and is none for where it reaches back to.
TEST(Inflating, TakesNothingOffWhatIsBroken) {
    const Octets deflated{0x78, 0xDA, 0x02, 0x53, 0x51, 0x01, 0x03, 0x86, 0x81,
                          0x04, 0xCC, 0x38, 0xC4, 0x01, 0x97, 0x80, 0x01, 0x00};
    Octets output(156);
    std::span<const std::uint8_t> from(deflated);
    std::span<std::uint8_t> to(output);
    EXPECT_EQ(Inflater().Inflate(from, to), InflateState::Broken);
    EXPECT_EQ(from.size(), deflated.size());
    EXPECT_EQ(to.size(), output.size());
}

TEST(Inflating, HasNoDictionary) {
    EXPECT_EQ(InflateInPieces({0x78, 0x20, 0, 0, 0, 1, 0x03, 0, 0, 0, 0, 1}, 100, 100).state, InflateState::Broken);
}

TEST(Inflating, NeverRefersToWhatIsBeforeTheBeginning) {
    // Fixed codes: a literal, then a match of length 3 at distance 2, then the end.
    EXPECT_EQ(InflateInPieces({0x78, 0x01, 0x63, 0x00, 0x42, 0x00, 0, 0, 0, 1}, 100, 100).state, InflateState::Broken);
}

} // namespace
