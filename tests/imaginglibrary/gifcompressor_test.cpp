// The codes of GIF, read back by a plain decoder.
#include "imaginglibrary/codecs/gif/gifcompressor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace imaginglibrary;

using Indices = std::vector<std::uint8_t>;

struct Block {
    std::size_t length;
    std::string bytes;
};

// Compresses in calls of `portion` indices.
std::vector<Block> CompressedBlocks(const Indices& indices, unsigned indexBits, std::size_t portion) {
    std::vector<Block> blocks;
    GifCompressor compressor(indexBits, [&](const std::uint8_t* block) {
        blocks.push_back({block[0], std::string(block + 1, block + 1 + block[0])});
        return true;
    });
    for (std::size_t at = 0; at < indices.size(); at += portion) {
        EXPECT_TRUE(compressor.Add(std::span(indices).subspan(at, std::min(portion, indices.size() - at))));
    }
    EXPECT_TRUE(compressor.Finish());
    return blocks;
}

std::string Joined(const std::vector<Block>& blocks) {
    std::string bytes;
    for (const Block& block : blocks) {
        bytes += block.bytes;
    }
    return bytes;
}

// What a decoder makes of the bytes, and how it came to it.
struct Reading {
    Indices indices;
    unsigned clears = 0;
    unsigned greatest = 0; // code that the table held
    bool isEnded = false;  // by the end code
    std::size_t bitsBehind = 0;
};

unsigned CodeAt(const std::string& bytes, std::size_t bit, unsigned bits) {
    unsigned code = 0;
    for (unsigned i = 0; i < bits; ++i) {
        const auto byte = static_cast<unsigned char>(bytes.at((bit + i) / 8));
        code |= (byte >> ((bit + i) % 8) & 1u) << i;
    }
    return code;
}

Reading Read(const std::string& bytes, unsigned indexBits) {
    const unsigned clear = 1u << indexBits;
    Reading reading;
    std::vector<Indices> strings;
    Indices last;
    unsigned bits = indexBits + 1;
    std::size_t at = 0;
    while (!reading.isEnded && at + bits <= bytes.size() * 8) {
        const unsigned code = CodeAt(bytes, at, bits);
        at += bits;
        if (code == clear) {
            ++reading.clears;
            strings.assign(clear + 2, {});
            for (unsigned i = 0; i < clear; ++i) {
                strings[i] = {static_cast<std::uint8_t>(i)};
            }
            last.clear();
            bits = indexBits + 1;
        } else if (code == clear + 1) {
            reading.isEnded = true;
        } else {
            EXPECT_LE(code, strings.size());
            Indices string = code < strings.size() ? strings[code] : last;
            if (code == strings.size()) {
                string.push_back(last.front());
            }
            reading.indices.insert(reading.indices.end(), string.begin(), string.end());
            if (!last.empty()) {
                last.push_back(string.front());
                strings.push_back(last);
            }
            reading.greatest = std::max(reading.greatest, static_cast<unsigned>(strings.size()) - 1);
            last = string;
            if (strings.size() == std::size_t{1} << bits && bits < 12) {
                ++bits;
            }
        }
    }
    reading.bitsBehind = bytes.size() * 8 - at;
    return reading;
}

Indices MakeNoise(std::size_t count, unsigned indexBits) {
    std::mt19937 random(static_cast<unsigned>(count));
    Indices indices(count);
    std::generate(indices.begin(), indices.end(),
                  [&] { return static_cast<std::uint8_t>(random() % (1u << indexBits)); });
    return indices;
}

void ExpectSurvival(const Indices& indices, unsigned indexBits) {
    const Reading reading = Read(Joined(CompressedBlocks(indices, indexBits, 1000)), indexBits);
    EXPECT_EQ(reading.indices, indices) << indices.size() << " indices of " << indexBits << " bits";
    EXPECT_TRUE(reading.isEnded);
    EXPECT_LT(reading.bitsBehind, 8u);
}

TEST(GifCompressor, NoiseOfAnyDepthAndLengthSurvives) {
    for (unsigned bits = 2; bits <= 8; ++bits) {
        for (std::size_t count = 1; count < (bits == 8 ? 600u : 80u); ++count) {
            ExpectSurvival(MakeNoise(count, bits), bits);
        }
        ExpectSurvival(MakeNoise(50000, bits), bits);
    }
}

TEST(GifCompressor, RunsOfAnyLengthSurvive) {
    for (std::size_t count = 1; count < 600; ++count) {
        ExpectSurvival(Indices(count, 3), 2);
    }
    ExpectSurvival(Indices(10000000, 255), 8);
}

TEST(GifCompressor, TableIsClearedBeforeItsLastCode) {
    const Reading reading = Read(Joined(CompressedBlocks(MakeNoise(50000, 8), 8, 50000)), 8);
    EXPECT_EQ(reading.greatest, 4094u);
    EXPECT_GE(reading.clears, 50000u / 2 / 3839);
}

// The first clear code may be left out, but not every reader knows.
TEST(GifCompressor, BeginsWithAClearCode) {
    EXPECT_EQ(Joined(CompressedBlocks({1}, 2, 1)), "\x4C\x01"); // 100 001 101, the first one lowest
}

TEST(GifCompressor, RepeatedStringsTakeOneCode) {
    const Indices pair{0, 1, 0, 1};
    EXPECT_EQ(Joined(CompressedBlocks(pair, 2, 4)), "\x44\x5C"); // 100 000 001 110 0101
}

TEST(GifCompressor, PortionsMakeNoDifference) {
    const Indices indices = MakeNoise(3000, 3);
    const std::string whole = Joined(CompressedBlocks(indices, 3, 3000));
    for (const std::size_t portion : {1u, 7u, 2999u}) {
        EXPECT_EQ(Joined(CompressedBlocks(indices, 3, portion)), whole) << portion;
    }
}

TEST(GifCompressor, BlocksAreFullButForTheLast) {
    for (std::size_t count = 1000; count < 1600; ++count) {
        const std::vector<Block> blocks = CompressedBlocks(MakeNoise(count, 8), 8, count);
        for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
            EXPECT_EQ(blocks[i].length, 255u);
        }
        EXPECT_GE(blocks.back().length, 1u);
    }
}

TEST(GifCompressor, FailureToWriteIsGivenBack) {
    const Indices noise = MakeNoise(100000, 8);
    int blocks = 0;
    GifCompressor early(8, [&](const std::uint8_t*) { return ++blocks < 3; });
    EXPECT_FALSE(early.Add(noise));
    EXPECT_EQ(blocks, 3);
    GifCompressor late(8, [](const std::uint8_t*) { return false; });
    EXPECT_TRUE(late.Add(std::span(noise).first(5)));
    EXPECT_FALSE(late.Finish());
}

} // namespace
