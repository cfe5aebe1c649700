// PNG files that are cut off, damaged, or made to do harm.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/pngfiles.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

unsigned MixedSample(unsigned x, unsigned y, unsigned channel) { return (x * 77 + y * 31 + channel * 91) & 255; }

std::string WholeFile(bool isInterlaced = false) { return MakePng({.isInterlaced = isInterlaced}, MixedSample); }

// One file for each way of laying out the data.
std::vector<std::string> PngLayouts() {
    std::vector<std::string> files;
    for (const bool isInterlaced : {false, true}) {
        files.push_back(WholeFile(isInterlaced));
        files.push_back(MakePng({.type = PNG_COLOR_TYPE_PALETTE,
                                 .isInterlaced = isInterlaced,
                                 .palette = Palette(256, MakeColor(1, 2, 3, 4)),
                                 .hasAlphas = true},
                                MixedSample));
        files.push_back(
            MakePng({.depth = 16, .type = PNG_COLOR_TYPE_GRAY_ALPHA, .isInterlaced = isInterlaced},
                    [](unsigned x, unsigned y, unsigned channel) { return MixedSample(x, y, channel) * 257; }));
        files.push_back(MakePng({.depth = 1, .type = PNG_COLOR_TYPE_GRAY, .isInterlaced = isInterlaced},
                                [](unsigned x, unsigned y, unsigned) { return (x ^ y) & 1; }));
    }
    files.push_back(WithLargestWindow(files.front()));
    return files;
}

// The file with a chunk put before another one.
std::string WithChunk(const std::string& png, const std::string& chunk, const std::string& before) {
    std::string bytes = png;
    return bytes.insert(FindChunk(png, before), chunk);
}

TEST(PngDamage, CutFileIsUndecodableUnlessAllItsPixelsAreThere) {
    for (const std::string& whole : PngLayouts()) {
        const std::vector<Color> colors = ColorsOf(PngCodec(), whole);
        const std::size_t endOfPixels = FindChunk(whole, "IEND");
        ASSERT_FALSE(colors.empty());
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string cut = whole.substr(0, size);
            const Status status = ReadAllRows(PngCodec(), cut);
            if (size >= endOfPixels) {
                ASSERT_EQ(status, Status::Ok);
                EXPECT_EQ(ColorsOf(PngCodec(), cut), colors);
            } else {
                EXPECT_EQ(status, UndecodableContent) << size << " of " << whole.size() << " bytes";
            }
        }
    }
}

TEST(PngDamage, AnyDamagedByteGivesAStatusAndSaysNothing) {
    testing::internal::CaptureStderr();
    for (const std::string& whole : PngLayouts()) {
        for (std::size_t i = 0; i < whole.size(); ++i) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                std::string damaged = whole;
                damaged[i] = static_cast<char>(damaged[i] ^ flip);
                const Status status = ReadAllRows(PngCodec(), damaged);
                EXPECT_TRUE(status == Status::Ok || status == UndecodableContent || status == Status::InvalidParameter);
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PngDamage, DamagedPixelDataIsUndecodable) {
    for (const std::string& whole : {WholeFile(), WholeFile(true), WithLargestWindow(WholeFile())}) {
        const std::size_t end = FindChunk(whole, "IEND");
        for (std::size_t i = FindChunk(whole, "IDAT"); i < end; ++i) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
            EXPECT_EQ(ReadAllRows(PngCodec(), damaged), UndecodableContent) << i;
        }
    }
}

TEST(PngDamage, OpeningNeedsTheHeaderOnly) {
    const std::string whole = WholeFile();
    constexpr std::size_t ChunkHead = 8;
    const auto picture = OpenBytes(PngCodec(), whole.substr(0, FindChunk(whole, "IDAT") + ChunkHead));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().width, 33u);
    EXPECT_EQ(ReadAllRows(**picture), UndecodableContent);
}

TEST(PngDamage, TooFewRowsAreUndecodable) {
    for (const std::string& whole : {WholeFile(), WholeFile(true), WithLargestWindow(WholeFile())}) {
        EXPECT_EQ(ReadAllRows(PngCodec(), WithClaimedSides(whole, 33, 10)), UndecodableContent);
    }
}

TEST(PngDamage, WhatStandsBehindThePixelsMayBeBroken) {
    for (const std::string& whole : {WholeFile(), WithLargestWindow(WholeFile())}) {
        EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(whole, "rubbish of any kind", "IEND")), Status::Ok);
        EXPECT_EQ(ReadAllRows(PngCodec(), whole + "another program's data"), Status::Ok);
        const std::string stream = ImageData(whole);
        std::string badChunk = PngChunk("IDAT", "no more is needed");
        badChunk.back() = static_cast<char>(badChunk.back() ^ 1);
        EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(whole, badChunk, "IEND")), Status::Ok);
        for (const auto& parts : {std::vector<std::string>{stream + "behind the stream"},
                                  {stream, "a chunk too many"},
                                  {"", stream.substr(0, 1), "", stream.substr(1), ""}}) {
            const std::string file = WithImageData(whole, parts);
            EXPECT_EQ(ReadAllRows(PngCodec(), file), Status::Ok);
            EXPECT_EQ(ColorsOf(PngCodec(), file), ColorsOf(PngCodec(), whole));
        }
    }
}

// Whoever writes the sum into a chunk of its own gets it passed over; a wrong one is an error beside the data only.
TEST(PngDamage, WrongSumIsUndecodableOnlyBesideTheData) {
    for (const std::string& whole : {WholeFile(), WithLargestWindow(WholeFile())}) {
        std::string stream = ImageData(whole);
        const std::size_t sum = stream.size() - 4;
        stream.back() = static_cast<char>(stream.back() ^ 1);
        EXPECT_EQ(ReadAllRows(PngCodec(), WithImageData(whole, {stream})), UndecodableContent);
        EXPECT_EQ(ReadAllRows(PngCodec(), WithImageData(whole, {stream.substr(0, sum), stream.substr(sum)})),
                  Status::Ok);
    }
}

TEST(PngDamage, SurplusRowsArePassedOver) {
    for (const std::string& whole : {WholeFile(), WithLargestWindow(WholeFile())}) {
        const std::string file = WithClaimedSides(whole, 33, 8);
        ASSERT_EQ(ReadAllRows(PngCodec(), file), Status::Ok);
        std::vector<Color> colors = ColorsOf(PngCodec(), whole);
        colors.resize(33 * 8);
        EXPECT_EQ(ColorsOf(PngCodec(), file), colors);
    }
}

// Two bands and a half; all that lies in sound chunks is read.
TEST(PngDamage, RowsBeforeTheDamageAreRead) {
    constexpr std::uint32_t Width = 700, Height = 300;
    const PngFile file{.width = Width, .height = Height, .more = [](png_structp png, png_infop) {
                           png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_PAETH);
                           png_set_compression_level(png, 0);
                       }};
    const std::string whole = MakePng(file, MixedSample);
    std::string damaged = whole;
    const std::size_t at = whole.size() / 10 * 9;
    damaged[at] = static_cast<char>(damaged[at] ^ 1);
    const auto picture = Opened(PngCodec(), whole);
    const auto damagedPicture = Opened(PngCodec(), damaged);
    ASSERT_TRUE(picture && damagedPicture);
    const auto rows = picture->OpenRows();
    const auto damagedRows = damagedPicture->OpenRows();
    ASSERT_TRUE(rows.Ok() && damagedRows.Ok());
    std::vector<std::uint8_t> row(3 * Width), damagedRow(3 * Width);
    std::uint32_t read = 0;
    while ((*damagedRows)->ReadRow(damagedRow.data()) == Status::Ok) {
        ASSERT_EQ((*rows)->ReadRow(row.data()), Status::Ok);
        if (read < 260) {
            ASSERT_EQ(damagedRow, row) << read;
        }
        ++read;
    }
    EXPECT_GE(read, 260u);
    EXPECT_LE(read, 276u); // what is left of the damaged chunk, whose checksum comes last
}

TEST(PngDamage, BrokenAncillaryChunksArePassedOver) {
    const std::string whole = WholeFile();
    const std::vector<Color> colors = ColorsOf(PngCodec(), whole);
    std::string badChecksum = PngChunk("pHYs", std::string("\0\0\x10\0\0\0\x10\0\1", 9));
    badChecksum.back() = static_cast<char>(badChecksum.back() ^ 1);
    for (const std::string& chunk :
         {PngChunk("iCCP", "no profile at all"), PngChunk("gAMA", ""), PngChunk("cHRM", std::string(32, '\xFF')),
          PngChunk("pHYs", "short"), PngChunk("tRNS", "x"), PngChunk("zTXt", "key"), PngChunk("sRGB", "\x7F"),
          PngChunk("prVt", "unknown to all"), badChecksum}) {
        const std::string bytes = WithChunk(whole, chunk, "IDAT");
        ASSERT_EQ(ReadAllRows(PngCodec(), bytes), Status::Ok) << chunk.substr(4, 4);
        EXPECT_EQ(ColorsOf(PngCodec(), bytes), colors);
    }
}

TEST(PngDamage, LongTextIsPassedOver) {
    const std::string text = "Comment" + std::string(1, '\0') + std::string(MaximumMetadataBytes + 1, 'x');
    EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(WholeFile(), PngChunk("tEXt", text), "IDAT")), Status::Ok);
}

TEST(PngDamage, ManyChunksArePassedOver) {
    std::string chunks;
    for (int i = 0; i < 5000; ++i) {
        chunks += PngChunk("tEXt", std::string("Comment\0text", 12));
    }
    EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(WholeFile(), chunks, "IDAT")), Status::Ok);
}

TEST(PngDamage, UnknownCriticalChunkIsUndecodable) {
    for (const char* const name : {"PRIV", "ARIV"}) { // of an even letter, and of an odd one
        EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(WholeFile(), PngChunk(name, "must be understood"), "IDAT")),
                  UndecodableContent);
    }
    EXPECT_EQ(ReadAllRows(PngCodec(), WithChunk(WholeFile(), PngChunk("pRIV", "may be passed over"), "IDAT")),
              Status::Ok);
}

TEST(PngDamage, PaletteMustBeThere) {
    const std::string whole =
        MakePng({.type = PNG_COLOR_TYPE_PALETTE, .palette = Palette(256, MakeColor(1, 2, 3))}, MixedSample);
    const std::size_t at = FindChunk(whole, "PLTE");
    EXPECT_EQ(ReadAllRows(PngCodec(), whole.substr(0, at) + whole.substr(at + 12 + 3 * 256)), UndecodableContent);
}

TEST(PngDamage, SideBeyondTheLimitIsInvalid) {
    const std::string whole = WholeFile();
    for (const std::uint32_t side : {MaximumSide + 1, 100000000u}) {
        EXPECT_EQ(OpenBytes(PngCodec(), WithClaimedSides(whole, side, 1)).GetStatus(), Status::InvalidParameter);
        EXPECT_EQ(OpenBytes(PngCodec(), WithClaimedSides(whole, 1, side)).GetStatus(), Status::InvalidParameter);
    }
    EXPECT_TRUE(OpenBytes(PngCodec(), WithClaimedSides(whole, MaximumSide, MaximumSide)).Ok());
}

TEST(PngDamage, EmptyPictureIsUndecodable) {
    EXPECT_EQ(OpenBytes(PngCodec(), WithClaimedSides(WholeFile(), 0, 1)).GetStatus(), UndecodableContent);
    EXPECT_EQ(OpenBytes(PngCodec(), WithClaimedSides(WholeFile(), 1, 0)).GetStatus(), UndecodableContent);
}

TEST(PngDamage, InterlacedPictureBeyondTheMemoryLimitIsRefusedBeforeItIsTaken) {
    const auto picture = OpenBytes(PngCodec(), WithClaimedSides(WholeFile(true), MaximumSide, MaximumSide));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->OpenRows().GetStatus(), Status::OutOfMemory);
}

} // namespace
