// The LZW of TIFF, read back by the rules of the standard and by libtiff.
#include "imaginglibrary/codecs/tiff/tifflzw.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace imaginglibrary;

using LzwBytes = std::vector<std::uint8_t>;

LzwBytes CompressedByLzw(const LzwBytes& bytes) {
    LzwBytes data;
    CompressLzw(bytes, data);
    return data;
}

struct ReadLzw {
    LzwBytes bytes;
    std::vector<unsigned> codes;
    bool isEnded = false;
    std::size_t bitsLeft = 0;
};

// As the standard's decoder does it, whose table is one string behind the writer's. Stops at what is not allowed.
ReadLzw ReadByTheStandard(const LzwBytes& data) {
    ReadLzw read;
    std::vector<LzwBytes> table;
    std::size_t at = 0;
    unsigned bits = 9;
    LzwBytes before;
    while (at + bits <= data.size() * 8) {
        unsigned code = 0;
        for (unsigned i = 0; i < bits; ++i, ++at) {
            code = code << 1 | (data[at / 8] >> (7 - at % 8) & 1u);
        }
        read.codes.push_back(code);
        if (code == 257) {
            read.isEnded = true;
            read.bitsLeft = data.size() * 8 - at;
            return read;
        }
        if (code == 256) {
            table.clear();
            before.clear();
            bits = 9;
            continue;
        }
        LzwBytes string;
        if (code < 256) {
            string = {static_cast<std::uint8_t>(code)};
        } else if (code - 258 < table.size()) {
            string = table[code - 258];
        } else if (code - 258 == table.size() && !before.empty()) {
            string = before;
            string.push_back(before.front());
        } else {
            return read;
        }
        if (!before.empty()) {
            before.push_back(string.front());
            table.push_back(before);
        }
        read.bytes.insert(read.bytes.end(), string.begin(), string.end());
        before = string;
        // "Early": where the string put in next would be the last of a width.
        const std::size_t next = 258 + table.size();
        bits = next >= 2047 ? 12 : next >= 1023 ? 11 : next >= 511 ? 10 : 9;
        if (next > 4094) {
            return read;
        }
    }
    return read;
}

LzwBytes LzwNoise(std::size_t count, unsigned values) {
    std::mt19937 random(static_cast<unsigned>(count) + values);
    LzwBytes bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random() % values);
    }
    return bytes;
}

void ExpectReadBack(const LzwBytes& bytes) {
    const ReadLzw read = ReadByTheStandard(CompressedByLzw(bytes));
    ASSERT_TRUE(read.isEnded) << bytes.size();
    ASSERT_EQ(read.bytes, bytes) << bytes.size();
    EXPECT_EQ(read.codes.front(), 256u);
    EXPECT_LT(read.bitsLeft, 8u);
}

// Around every length at which codes become longer or the table is full.
TEST(TiffLzw, ComesBackAtEveryLength) {
    for (std::size_t length = 0; length < 1100; ++length) {
        ExpectReadBack(LzwNoise(length, 256));
    }
    for (std::size_t length = 1700; length < 1900; ++length) {
        ExpectReadBack(LzwNoise(length, 256));
    }
    for (std::size_t length = 3800; length < 4500; ++length) {
        ExpectReadBack(LzwNoise(length, 256));
    }
}

TEST(TiffLzw, ComesBackWhateverRepeatsItself) {
    for (const unsigned values : {1u, 2u, 3u, 17u, 256u}) {
        for (const std::size_t length : {1u, 2u, 3u, 1000u, 65536u, 200000u}) {
            ExpectReadBack(LzwNoise(length, values));
        }
    }
}

TEST(TiffLzw, HasTheCodesOfTheStandardsExample) {
    const ReadLzw read = ReadByTheStandard(CompressedByLzw({7, 7, 7, 8, 8, 7, 7, 6, 6}));
    EXPECT_EQ(read.codes, (std::vector<unsigned>{256, 7, 258, 8, 8, 258, 6, 6, 257}));
}

TEST(TiffLzw, KeepsOneTableForManyCodes) {
    const ReadLzw read = ReadByTheStandard(CompressedByLzw(LzwNoise(20000, 256)));
    std::vector<std::size_t> clears;
    for (std::size_t i = 0; i < read.codes.size(); ++i) {
        if (read.codes[i] == 256) {
            clears.push_back(i);
        }
    }
    ASSERT_GT(clears.size(), 3u);
    EXPECT_EQ(clears[0], 0u);
    EXPECT_EQ(clears[1], 1u + 4094 - 258); // behind a code for each free one but the last
    EXPECT_EQ(clears[2] - clears[1], clears[1]);
}

TEST(TiffLzw, IsAppended) {
    LzwBytes data{1, 2, 3};
    CompressLzw(LzwBytes{9, 9}, data);
    EXPECT_EQ(LzwBytes(data.begin(), data.begin() + 3), (LzwBytes{1, 2, 3}));
    EXPECT_EQ(ReadByTheStandard(LzwBytes(data.begin() + 3, data.end())).bytes, (LzwBytes{9, 9}));
}

TEST(TiffLzw, IsReadByLibtiff) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder / "strip.tif").string();
    for (const unsigned values : {2u, 40u, 256u}) {
        for (const std::size_t length : {1u, 253u, 254u, 3836u, 3837u, 65000u}) {
            const LzwBytes bytes = LzwNoise(length, values);
            LzwBytes data = CompressedByLzw(bytes);
            TIFF* written = TIFFOpen(path.c_str(), "w");
            TIFFSetField(written, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(length));
            TIFFSetField(written, TIFFTAG_IMAGELENGTH, 1);
            TIFFSetField(written, TIFFTAG_BITSPERSAMPLE, 8);
            TIFFSetField(written, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
            TIFFSetField(written, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
            TIFFSetField(written, TIFFTAG_ROWSPERSTRIP, 1);
            TIFFWriteRawStrip(written, 0, data.data(), static_cast<tmsize_t>(data.size()));
            TIFFClose(written);
            TIFF* read = TIFFOpen(path.c_str(), "r");
            LzwBytes back(length);
            EXPECT_EQ(TIFFReadEncodedStrip(read, 0, back.data(), static_cast<tmsize_t>(length)),
                      static_cast<tmsize_t>(length));
            TIFFClose(read);
            EXPECT_EQ(back, bytes) << length << ", " << values;
        }
    }
}

} // namespace
