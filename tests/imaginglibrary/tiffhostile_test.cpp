// Broken and malicious TIFF files: a status, and never more memory than the limits allow.
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/tiffmaker.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

// A file of nothing but a directory, put together by hand.
class RawTiff {
  public:
    // Type 3 is a short, type 4 a long.
    RawTiff& Tag(unsigned tag, unsigned type, std::uint32_t value, std::uint32_t count = 1) {
        std::array<std::uint8_t, 12> entry{};
        PutLittleEndian16(&entry[0], static_cast<std::uint16_t>(tag));
        PutLittleEndian16(&entry[2], static_cast<std::uint16_t>(type));
        PutLittleEndian32(&entry[4], count);
        PutLittleEndian32(&entry[8], value);
        entries_.append(entry.begin(), entry.end());
        return *this;
    }

    std::string Bytes() const {
        std::string bytes("II\x2A\0\x08\0\0\0", 8);
        const std::size_t count = entries_.size() / 12;
        bytes.push_back(static_cast<char>(count));
        bytes.push_back(static_cast<char>(count >> 8));
        return bytes + entries_ + std::string(4, '\0') + std::string(64, '\x55');
    }

  private:
    std::string entries_;
};

RawTiff GreyOf(std::uint32_t width, std::uint32_t height) {
    return RawTiff().Tag(256, 4, width).Tag(257, 4, height).Tag(258, 3, 8).Tag(259, 3, 1).Tag(262, 3, 1);
}

const std::vector<PixelFormat> HostileFormats{PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Rgb24,
                                              PixelFormat::Argb32};

// Only the resolution, which stands at the end, may be missing.
TEST(HostileTiff, TruncatedFileIsUndecodableOrWhole) {
    for (const PixelFormat format : HostileFormats) {
        const auto picture = MakePicture(format, 7, 5);
        const std::string whole = BytesWritten(TiffCodec(), *picture);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const auto tiff = OpenBytes(TiffCodec(), whole.substr(0, size));
            if (tiff.Ok() && ReadAllRows(**tiff) == Status::Ok) {
                EXPECT_GT(size, whole.size() - 24);
                EXPECT_EQ(ColorsOf(**tiff), ColorsOf(*picture)) << size << " of " << whole.size();
            }
        }
    }
}

// libtiff takes the indices for greys then, and so does whoever uses it.
TEST(HostileTiff, EightBitPaletteCutOffReadsAsGrey) {
    const std::string whole = BytesWritten(TiffCodec(), *MakePicture(PixelFormat::Indexed8, 7, 5));
    const auto tiff = OpenBytes(TiffCodec(), whole.substr(0, whole.size() - 1));
    ASSERT_TRUE(tiff.Ok());
    EXPECT_EQ((*tiff)->Info().palette, GreyPalette(256));
}

// Those that we write, and kinds that only others do.
std::vector<std::string> HostileFiles() {
    std::vector<std::string> files;
    for (const PixelFormat format : HostileFormats) {
        files.push_back(BytesWritten(TiffCodec(), *MakePicture(format, 7, 5)));
    }
    for (const int bits : {8, 16}) {
        const TiffSpec lab{.width = 7, .height = 5, .bits = bits, .samples = 4, .photometric = PHOTOMETRIC_CIELAB};
        files.push_back(MakeTiff(lab, [&](auto x, auto y, unsigned sample) { return Mixed(x, y, sample, bits); }));
    }
    return files;
}

TEST(HostileTiff, SpoiledBytesNeverCrash) {
    for (const std::string& whole : HostileFiles()) {
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x02, 0x80, 0xFF}) {
                std::string spoiled = whole;
                spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
                ReadAllRows(TiffCodec(), spoiled);
            }
        }
    }
}

TEST(HostileTiff, SideBeyondTheLimitIsRefused) {
    EXPECT_EQ(ReadAllRows(TiffCodec(), GreyOf(65536, 4).Tag(273, 4, 8).Tag(278, 4, 4).Tag(279, 4, 64).Bytes()),
              Status::InvalidParameter);
    EXPECT_EQ(ReadAllRows(TiffCodec(), GreyOf(4, 65536).Tag(273, 4, 8).Tag(278, 4, 4).Tag(279, 4, 64).Bytes()),
              Status::InvalidParameter);
}

TEST(HostileTiff, SamplesOfMoreThanSixteenBitsAreUndecodable) {
    const auto statusOf = [](std::uint32_t bits) {
        const auto tiff = RawTiff().Tag(256, 4, 4).Tag(257, 4, 2).Tag(258, 3, bits).Tag(259, 3, 1).Tag(262, 3, 1);
        return ReadAllRows(TiffCodec(), RawTiff(tiff).Tag(273, 4, 8).Tag(278, 4, 2).Tag(279, 4, 64).Bytes());
    };
    EXPECT_EQ(statusOf(16), Status::Ok);
    EXPECT_EQ(statusOf(17), UndecodableContent);
    EXPECT_EQ(statusOf(32), UndecodableContent);
}

TEST(HostileTiff, PictureWithoutSizeIsUndecodable) {
    EXPECT_EQ(ReadAllRows(TiffCodec(), GreyOf(0, 4).Tag(273, 4, 8).Tag(278, 4, 4).Tag(279, 4, 64).Bytes()),
              UndecodableContent);
    EXPECT_EQ(ReadAllRows(TiffCodec(), RawTiff().Tag(258, 3, 8).Bytes()), UndecodableContent);
}

TEST(HostileTiff, MissingPixelsAreUndecodable) {
    EXPECT_EQ(ReadAllRows(TiffCodec(), GreyOf(60000, 60000).Tag(273, 4, 8).Tag(278, 4, 60000).Tag(279, 4, 64).Bytes()),
              UndecodableContent);
    EXPECT_EQ(ReadAllRows(TiffCodec(), GreyOf(60, 60).Tag(278, 4, 60).Bytes()), UndecodableContent);
}

TEST(HostileTiff, BandOfTilesBeyondTheLimitIsRefused) {
    EXPECT_EQ(
        ReadAllRows(TiffCodec(),
                    GreyOf(65535, 65535).Tag(322, 4, 16).Tag(323, 4, 32768).Tag(324, 4, 8).Tag(325, 4, 64).Bytes()),
        Status::OutOfMemory);
}

TEST(HostileTiff, TileBeyondTheLimitIsRefused) {
    EXPECT_EQ(
        ReadAllRows(TiffCodec(),
                    GreyOf(60000, 60000).Tag(322, 4, 65536).Tag(323, 4, 65536).Tag(324, 4, 8).Tag(325, 4, 64).Bytes()),
        Status::OutOfMemory);
}

// Whether a grey file in tiles can be opened; its pixels need not be there for that.
Status StatusInTiles(std::uint32_t width, std::uint32_t height, std::uint32_t tileWidth, std::uint32_t tileLength) {
    const auto tiff =
        GreyOf(width, height).Tag(322, 4, tileWidth).Tag(323, 4, tileLength).Tag(324, 4, 8).Tag(325, 4, 64);
    return OpenBytes(TiffCodec(), tiff.Bytes()).GetStatus();
}

TEST(HostileTiff, RowOfTilesMayTakeWhatAPictureMay) {
    constexpr std::uint32_t Side = 32768;
    constexpr std::uint32_t Rows = MaximumPictureBytes / Side;
    EXPECT_EQ(StatusInTiles(Side, Rows, 16, Rows), Status::Ok);
    EXPECT_EQ(StatusInTiles(Side + 1, Rows, 16, Rows), Status::OutOfMemory);
    EXPECT_EQ(StatusInTiles(Side, Rows + 1, 16, Rows + 16), Status::OutOfMemory);
    EXPECT_EQ(StatusInTiles(Side, Rows + 1, 16, Rows), Status::Ok);
    // The tiles of a lower picture are filled in part.
    EXPECT_EQ(StatusInTiles(Side + 1, Rows - 1, 16, Rows + 16), Status::Ok);
}

TEST(HostileTiff, TileMayBeAsLargeAsTheLimit) {
    constexpr std::uint32_t Side = 16384;
    static_assert(MaximumTileBytes == std::size_t{Side} * Side);
    EXPECT_EQ(StatusInTiles(100, 100, Side, Side), Status::Ok);
    EXPECT_EQ(StatusInTiles(100, 100, Side + 16, Side), Status::OutOfMemory);
    EXPECT_EQ(StatusInTiles(100, 100, Side, Side + 16), Status::OutOfMemory);
}

TEST(HostileTiff, TilesWithoutASideAreUndecodable) {
    EXPECT_EQ(StatusInTiles(100, 100, 0, 16), UndecodableContent);
    EXPECT_EQ(StatusInTiles(100, 100, 16, 0), UndecodableContent);
    // Nor may a row of a tile end within a byte.
    const auto inBits = [](std::uint32_t tileWidth) {
        const auto tiff = RawTiff().Tag(256, 4, 100).Tag(257, 4, 100).Tag(258, 3, 1).Tag(259, 3, 1).Tag(262, 3, 1);
        const auto tiled = RawTiff(tiff).Tag(322, 4, tileWidth).Tag(323, 4, 128).Tag(324, 4, 8).Tag(325, 4, 64);
        return OpenBytes(TiffCodec(), tiled.Bytes()).GetStatus();
    };
    EXPECT_EQ(inBits(128), Status::Ok);
    EXPECT_EQ(inBits(124), UndecodableContent);
}

TEST(HostileTiff, TileWiderThanAnyNumberIsRefused) {
    EXPECT_NE(ReadAllRows(
                  TiffCodec(),
                  GreyOf(60000, 60000).Tag(322, 4, 0xFFFFFFF0).Tag(323, 4, 16).Tag(324, 4, 8).Tag(325, 4, 64).Bytes()),
              Status::Ok);
}

TEST(HostileTiff, RowMayTakeWhatATileMay) {
    const auto statusOf = [](std::uint32_t samples) {
        const auto tiff = GreyOf(65535, 1).Tag(273, 4, 8).Tag(277, 3, samples).Tag(278, 4, 1).Tag(279, 4, 64);
        return OpenBytes(TiffCodec(), RawTiff(tiff).Bytes()).GetStatus();
    };
    EXPECT_EQ(statusOf(4096), Status::Ok);
    EXPECT_EQ(statusOf(4097), Status::OutOfMemory);
}

TEST(HostileTiff, MoreSamplesThanMemoryAreRefused) {
    EXPECT_NE(ReadAllRows(TiffCodec(),
                          GreyOf(60000, 4).Tag(273, 4, 8).Tag(277, 3, 65535).Tag(278, 4, 4).Tag(279, 4, 64).Bytes()),
              Status::Ok);
}

TEST(HostileTiff, DirectoryThatPointsAtItselfIsRead) {
    std::string whole = BytesWritten(TiffCodec(), *MakePicture(PixelFormat::Rgb24, 7, 5));
    const std::uint32_t start = LittleEndian32(reinterpret_cast<const std::uint8_t*>(whole.data()) + 4);
    const std::uint32_t entries = LittleEndian16(reinterpret_cast<const std::uint8_t*>(whole.data()) + start);
    PutLittleEndian32(reinterpret_cast<std::uint8_t*>(whole.data()) + start + 2 + entries * 12, start);
    EXPECT_EQ(ReadAllRows(TiffCodec(), whole), Status::Ok);
}

} // namespace
