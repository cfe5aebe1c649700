// JPEG files with the codes that are best for them, beside those that libjpeg makes.
#include "imaginglibrary/codecs/jpeg/jpegcompactor.h"

#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::size_t AllAtOnce = std::string::npos;

Status CompactInto(MemoryOutput& file, const std::string& jpeg, std::size_t portion = AllAtOnce) {
    JpegCompactor compactor(file);
    for (std::size_t at = 0; at < jpeg.size();) {
        const std::size_t count = std::min(portion, jpeg.size() - at);
        const Status status = compactor.Append(reinterpret_cast<const std::uint8_t*>(&jpeg[at]), count);
        if (status != Status::Ok) {
            return status;
        }
        at += count;
    }
    const Status status = compactor.Finish();
    return status == Status::Ok ? file.Commit() : status;
}

std::string Compacted(const std::string& jpeg, std::size_t portion = AllAtOnce) {
    MemoryOutput file;
    EXPECT_EQ(CompactInto(file, jpeg, portion), Status::Ok);
    return file.Bytes();
}

JpegSamples NoiseOf(int amplitude) {
    return [amplitude, random = std::mt19937(7)](unsigned, unsigned, int) mutable {
        return static_cast<std::uint8_t>(128 + static_cast<int>(random() % (2 * static_cast<unsigned>(amplitude))) -
                                         amplitude);
    };
}

constexpr JpegFile WithHalvedColor = {
    .width = 333, .height = 271, .horizontalSampling = 2, .verticalSampling = 2, .quality = 75};

TEST(JpegCompactor, FileIsAsSmallAsLibjpegsBest) {
    for (const int quality : {1, 30, 75, 100}) {
        JpegFile file = WithHalvedColor;
        file.quality = quality;
        const std::string plain = MakeJpeg(file, NoiseOf(60));
        file.hasBestCodes = true;
        const std::string best = MakeJpeg(file, NoiseOf(60));
        constexpr std::size_t HeadsOfThreeMoreTables = 12;
        EXPECT_NEAR(static_cast<double>(Compacted(plain).size() + HeadsOfThreeMoreTables),
                    static_cast<double>(best.size()), static_cast<double>(best.size()) / 1000)
            << quality;
        EXPECT_LT(best.size(), plain.size());
    }
}

TEST(JpegCompactor, PixelsStayAsTheyWere) {
    for (const auto& [columns, rows] : {std::pair{1, 1}, {2, 1}, {1, 2}, {2, 2}, {4, 1}}) {
        for (const auto& [width, height] :
             {std::pair{1u, 1u}, {8u, 8u}, {16u, 16u}, {17u, 16u}, {16u, 17u}, {33u, 65u}}) {
            const JpegFile file{.width = width,
                                .height = height,
                                .horizontalSampling = columns,
                                .verticalSampling = rows,
                                .quality = 90};
            const std::string plain = MakeJpeg(file, NoiseOf(127));
            EXPECT_EQ(ColorsOf(JpegCodec(), Compacted(plain)), ColorsOf(JpegCodec(), plain)) << width << 'x' << height;
        }
    }
}

TEST(JpegCompactor, PortionsMakeNoDifference) {
    const std::string plain = MakeJpeg(WithHalvedColor, NoiseOf(60));
    const std::string whole = Compacted(plain);
    for (const std::size_t portion : {std::size_t{1}, std::size_t{2}, std::size_t{4099}, plain.size() - 1}) {
        EXPECT_EQ(Compacted(plain, portion), whole) << portion;
    }
}

// The end has symbols that none of the kept ones is.
TEST(JpegCompactor, LongScanIsWrittenAsItComes) {
    const JpegFile file{.width = 600, .height = 700, .horizontalSampling = 2, .verticalSampling = 2, .quality = 100};
    const std::string plain =
        MakeJpeg(file, [noise = NoiseOf(90), wild = NoiseOf(127)](unsigned x, unsigned y, int channel) mutable {
            return y < 690 ? noise(x, y, channel) : wild(x, y, channel) < 128 ? 0 : 255;
        });
    ASSERT_GT(plain.size(), std::size_t{9} << 16);
    MemoryOutput output;
    JpegCompactor compactor(output);
    std::size_t mostKept = 0;
    for (std::size_t at = 0; at < plain.size(); at += 32768) {
        const std::size_t count = std::min(std::size_t{32768}, plain.size() - at);
        ASSERT_EQ(compactor.Append(reinterpret_cast<const std::uint8_t*>(&plain[at]), count), Status::Ok);
        const std::size_t written = static_cast<std::size_t>(output.Size());
        mostKept = std::max(mostKept, at + count - std::min(at + count, written));
    }
    ASSERT_EQ(compactor.Finish(), Status::Ok);
    ASSERT_EQ(output.Commit(), Status::Ok);
    EXPECT_LT(mostKept, std::size_t{6} << 16);
    EXPECT_LT(output.Bytes().size(), plain.size());
    EXPECT_EQ(ColorsOf(JpegCodec(), output.Bytes()), ColorsOf(JpegCodec(), plain));
}

// Black and white blocks side by side have the greatest first coefficient, stripes the greatest of the others.
TEST(JpegCompactor, GreatestSymbolsMayComeBehindThoseThatWereKept) {
    const JpegFile file{.width = 512, .height = 720, .quality = 100};
    const std::string plain = MakeJpeg(file, [noise = NoiseOf(20)](unsigned x, unsigned y, int channel) mutable {
        const unsigned lit = y < 704 ? noise(x, y, channel) : y < 712 ? x / 8 % 2 * 255 : x % 2 * 255;
        return static_cast<std::uint8_t>(lit);
    });
    ASSERT_EQ(plain.find("\xFF\xDD"), std::string::npos);
    EXPECT_EQ(ColorsOf(JpegCodec(), Compacted(plain, 65536)), ColorsOf(JpegCodec(), plain));
}

TEST(JpegCompactor, FileWithoutAScanIsRefused) {
    MemoryOutput file;
    EXPECT_EQ(CompactInto(file, "\xFF\xD8\xFF\xD9"), Status::GenericError);
    EXPECT_EQ(CompactInto(file, "\xFF\xD8"), Status::GenericError);
    EXPECT_EQ(CompactInto(file, ""), Status::GenericError);
}

TEST(JpegCompactor, FullDiskIsToldWhereverItIsMet) {
    const std::string plain =
        MakeJpeg({.width = 24, .height = 24, .horizontalSampling = 2, .verticalSampling = 2}, NoiseOf(60));
    const std::size_t whole = Compacted(plain).size();
    for (std::size_t room = 0; room < whole; ++room) {
        MemoryOutput file(room);
        EXPECT_EQ(CompactInto(file, plain), MemoryOutput::DiskFull) << room;
    }
}

TEST(JpegCompactor, FileThatBreaksOffIsRefused) {
    const std::string plain = MakeJpeg({.horizontalSampling = 2, .verticalSampling = 2});
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{3}, FindMarker(plain, 0xC0), FindMarker(plain, 0xDA) + 2, plain.size() - 1}) {
        MemoryOutput file;
        EXPECT_EQ(CompactInto(file, plain.substr(0, length)), Status::GenericError) << length;
    }
}

TEST(JpegCompactor, BitsThatAreNoSymbolAreRefused) {
    std::string plain = MakeJpeg({.width = 64, .height = 64, .horizontalSampling = 2, .verticalSampling = 2});
    const std::size_t scan = FindMarker(plain, 0xDA) + 14;
    for (std::size_t at = scan; at < scan + 8; at += 2) {
        plain[at] = '\xFF';
        plain[at + 1] = '\0';
    }
    MemoryOutput file;
    EXPECT_EQ(CompactInto(file, plain), Status::GenericError);
}

} // namespace
