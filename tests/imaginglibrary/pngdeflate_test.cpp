// Deflate data in bands, read back by zlib.
#include "imaginglibrary/codecs/png/pngdeflate_zlib.h"

#include <gtest/gtest.h>

#include <random>

#include <zlib.h>

namespace {

using namespace imaginglibrary;

using Data = std::vector<std::uint8_t>;

// What raw deflate data stand for, and whether the stream ends with them.
struct Inflated {
    Data bytes;
    bool isEnded = false;
};

Inflated Inflate(const Data& data, std::size_t mostBytes) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
    Inflated inflated{Data(mostBytes + 1)};
    stream.next_in = const_cast<Bytef*>(data.data());
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = inflated.bytes.data();
    stream.avail_out = static_cast<uInt>(inflated.bytes.size());
    const int result = inflate(&stream, Z_SYNC_FLUSH);
    EXPECT_TRUE(result == Z_OK || result == Z_STREAM_END) << result;
    EXPECT_EQ(stream.avail_in, 0u);
    inflated.isEnded = result == Z_STREAM_END;
    inflated.bytes.resize(stream.total_out);
    inflateEnd(&stream);
    return inflated;
}

// Every third byte is hard to foretell.
Data Mixed(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    Data bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = i % 3 == 0 ? static_cast<std::uint8_t>(random()) : static_cast<std::uint8_t>(i / 100);
    }
    return bytes;
}

Data Noise(std::size_t count) {
    std::mt19937 random(5);
    Data bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

class DeflatedBands : public testing::TestWithParam<Effort> {};

TEST_P(DeflatedBands, ComeBackAsTheyWere) {
    for (const std::size_t size : {0u, 1u, 2u, 100u, 4096u, 65535u, 65536u, 600000u}) {
        const Data bytes = Mixed(size, 1);
        Data data;
        Deflate(bytes, {}, GetParam(), Band::IsLast, data);
        const Inflated inflated = Inflate(data, size);
        EXPECT_EQ(inflated.bytes, bytes) << size;
        EXPECT_TRUE(inflated.isEnded) << size;
    }
}

TEST_P(DeflatedBands, StandBehindEachOther) {
    Data data, expected, history;
    for (unsigned band = 0; band < 4; ++band) {
        const Data bytes = Mixed(50000 + band, band);
        Deflate(bytes, history, GetParam(), band == 3 ? Band::IsLast : Band::GoesOn, data);
        expected.insert(expected.end(), bytes.begin(), bytes.end());
        history.assign(bytes.end() - DeflateWindow, bytes.end());
        EXPECT_EQ(Inflate(data, 300000).isEnded, band == 3);
        EXPECT_EQ(Inflate(data, 300000).bytes, expected);
    }
}

TEST_P(DeflatedBands, ReferToWhatEndedTheBandBefore) {
    const Data noise = Noise(30000);
    Data alone, behind;
    Deflate(noise, {}, GetParam(), Band::IsLast, alone);
    Deflate(noise, noise, GetParam(), Band::IsLast, behind);
    EXPECT_GT(alone.size(), 30000u);
    EXPECT_LT(behind.size(), 3000u);
}

TEST_P(DeflatedBands, OfNoiseHardlyGrow) {
    const Data noise = Noise(500000);
    Data data;
    Deflate(noise, {}, GetParam(), Band::GoesOn, data);
    EXPECT_LT(data.size(), 502000u);
    EXPECT_EQ(Inflate(data, 500000).bytes, noise);
}

TEST_P(DeflatedBands, AreAppended) {
    Data data{1, 2, 3};
    Deflate(Data(10, 4), {}, GetParam(), Band::IsLast, data);
    EXPECT_EQ(Data(data.begin(), data.begin() + 3), (Data{1, 2, 3}));
    EXPECT_EQ(Inflate(Data(data.begin() + 3, data.end()), 10).bytes, Data(10, 4));
}

INSTANTIATE_TEST_SUITE_P(Efforts, DeflatedBands, testing::Values(Effort::Quick, Effort::Thorough));

TEST(DeflateEffort, ThoroughIsSmallerOnWhatRepeatsItself) {
    Data bytes;
    for (int i = 0; i < 4000; ++i) {
        const std::string line = "row " + std::to_string(i % 97) + " of some table, column " + std::to_string(i % 31);
        bytes.insert(bytes.end(), line.begin(), line.end());
    }
    Data quick, thorough;
    Deflate(bytes, {}, Effort::Quick, Band::IsLast, quick);
    Deflate(bytes, {}, Effort::Thorough, Band::IsLast, thorough);
    EXPECT_LT(thorough.size() * 10, quick.size() * 9);
}

TEST(DeflateByZlibAlone, ComesBackAsItWas) {
    const Data bytes = Mixed(100000, 3);
    for (const Effort effort : {Effort::Quick, Effort::Thorough}) {
        Data data;
        DeflateByZlib(bytes, {}, effort, Band::IsLast, data);
        EXPECT_EQ(Inflate(data, 100000).bytes, bytes);
    }
}

// How large zlib makes it at a level of its own, but for the header and the checksum.
std::size_t SizeAtLevel(const Data& bytes, int level) {
    Data data(compressBound(static_cast<uLong>(bytes.size())));
    auto length = static_cast<uLongf>(data.size());
    EXPECT_EQ(compress2(data.data(), &length, bytes.data(), static_cast<uLong>(bytes.size()), level), Z_OK);
    return length - 6;
}

TEST(DeflateByZlibAlone, WorksAsHardAsTheEffortSays) {
    Data bytes;
    for (unsigned i = 0; i < 30000; ++i) { // words of few kinds in no order
        const unsigned word = i * i * 2654435761u >> 25;
        bytes.insert(bytes.end(), 3 + word % 5, static_cast<std::uint8_t>(word));
    }
    Data quick, thorough;
    DeflateByZlib(bytes, {}, Effort::Quick, Band::IsLast, quick);
    DeflateByZlib(bytes, {}, Effort::Thorough, Band::IsLast, thorough);
    EXPECT_NEAR(static_cast<double>(quick.size()), static_cast<double>(SizeAtLevel(bytes, 1)), 40);
    EXPECT_LT(thorough.size(), SizeAtLevel(bytes, 6)) << "a little harder than the level that it is made of";
    EXPECT_GT(thorough.size(), SizeAtLevel(bytes, 7));
}

} // namespace
