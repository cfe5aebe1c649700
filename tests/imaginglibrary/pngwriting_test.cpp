// PNG files as they are written.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/pngfiles.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::pair<std::uint32_t, std::uint32_t> PngSizes[] = {{1, 1}, {7, 5}, {17, 3}, {65, 33}, {8, 8}, {3, 100}};

struct Kept {
    PixelFormat source;
    int type;
    int depth;
};

constexpr Kept KeptFormats[] = {
    {PixelFormat::Indexed1, PNG_COLOR_TYPE_PALETTE, 1},   {PixelFormat::Indexed4, PNG_COLOR_TYPE_PALETTE, 4},
    {PixelFormat::Indexed8, PNG_COLOR_TYPE_PALETTE, 8},   {PixelFormat::Rgb555, PNG_COLOR_TYPE_RGB, 8},
    {PixelFormat::Rgb565, PNG_COLOR_TYPE_RGB, 8},         {PixelFormat::Rgb24, PNG_COLOR_TYPE_RGB, 8},
    {PixelFormat::Rgb32, PNG_COLOR_TYPE_RGB, 8},          {PixelFormat::Rgb48, PNG_COLOR_TYPE_RGB, 8},
    {PixelFormat::Argb1555, PNG_COLOR_TYPE_RGB_ALPHA, 8}, {PixelFormat::Argb32, PNG_COLOR_TYPE_RGB_ALPHA, 8},
    {PixelFormat::Pargb32, PNG_COLOR_TYPE_RGB_ALPHA, 8},
};

std::string PngWrittenWith(Resolution resolution) {
    const PictureInfo info{.width = 3, .height = 2, .format = PixelFormat::Rgb24, .resolution = resolution};
    return BytesWritten(PngCodec(), **Bitmap::Create(info));
}

// A row of 8-bit indices with this palette.
std::shared_ptr<Bitmap> RowOf(const std::string& indices, Palette palette) {
    auto bitmap = *Bitmap::Create({.width = static_cast<std::uint32_t>(indices.size()),
                                   .height = 1,
                                   .format = PixelFormat::Indexed8,
                                   .palette = std::move(palette)});
    std::copy(indices.begin(), indices.end(), bitmap->Row(0));
    return bitmap;
}

TEST(PngWriting, NothingIsLostOfAnyFormat) {
    for (const Kept& kept : KeptFormats) {
        for (const auto& [width, height] : PngSizes) {
            const auto picture = MakePicture(kept.source, width, height);
            const auto read = Rewritten(PngCodec(), *picture);
            ASSERT_TRUE(read);
            EXPECT_EQ(ColorsOf(*read), ColorsOf(*picture))
                << std::hex << static_cast<unsigned>(kept.source) << std::dec << ' ' << width << 'x' << height;
        }
    }
}

TEST(PngWriting, DepthAndTypeFollowTheFormat) {
    for (const Kept& kept : KeptFormats) {
        const std::string header = *ChunkData(BytesWritten(PngCodec(), *MakePicture(kept.source, 5, 5)), "IHDR");
        EXPECT_EQ(header[8], kept.depth);
        EXPECT_EQ(header[9], kept.type);
        EXPECT_EQ(header[12], PNG_INTERLACE_NONE);
    }
}

TEST(PngWriting, IndexedPictureStaysWhatItWas) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8}) {
        const auto picture = MakePicture(format, 19, 4);
        const auto read = Rewritten(PngCodec(), *picture);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->Info().format, format);
        EXPECT_EQ(read->Info().palette, picture->Info().palette);
    }
}

TEST(PngWriting, AlphaOfAPaletteIsKept) {
    const Palette palette{Red, MakeColor(1, 2, 3, 128), Blue, MakeColor(4, 5, 6, 0), Black};
    const auto picture = RowOf(std::string("\0\1\2\3\4", 5), palette);
    const std::string bytes = BytesWritten(PngCodec(), *picture);
    EXPECT_EQ(ChunkData(bytes, "tRNS")->substr(0, 4), std::string("\xFF\x80\xFF\x00", 4));
    EXPECT_EQ(ColorsOf(**OpenBytes(PngCodec(), bytes)), palette);
}

TEST(PngWriting, OpaquePaletteHasNoTransparencyChunk) {
    EXPECT_EQ(ChunkData(BytesWritten(PngCodec(), *MakePicture(PixelFormat::Indexed8, 3, 3)), "tRNS"), std::nullopt);
}

TEST(PngWriting, IndexBeyondThePaletteBecomesBlackWithinIt) {
    const auto picture = RowOf(std::string("\0\1\2\xFF", 4), {Red, Blue});
    const std::string bytes = BytesWritten(PngCodec(), *picture);
    EXPECT_EQ(ChunkData(bytes, "PLTE")->size(), 9u);
    const auto read = OpenBytes(PngCodec(), bytes);
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ((*read)->Info().palette, (Palette{Red, Blue, Black}));
    std::uint8_t row[4];
    ASSERT_EQ((*(*read)->OpenRows())->ReadRow(row), Status::Ok);
    EXPECT_EQ(std::string(row, row + 4), std::string("\0\1\2\2", 4));
}

TEST(PngWriting, BlackOfTheOwnPaletteServesForIndicesBeyondIt) {
    const auto picture = RowOf(std::string("\0\1\2\xFF", 4), {Red, Black});
    const auto read = Rewritten(PngCodec(), *picture);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Info().palette, (Palette{Red, Black}));
    EXPECT_EQ(ColorsOf(*read), (std::vector<Color>{Red, Black, Black, Black}));
}

TEST(PngWriting, ShortPaletteOfPackedPixelsIsMadeValidToo) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4}) {
        for (const std::size_t length : {0u, 1u}) {
            const auto full = MakePicture(format, 19, 4);
            PictureInfo info = full->Info();
            info.palette.resize(length);
            const auto picture = *Bitmap::Create(info);
            for (std::uint32_t y = 0; y < info.height; ++y) {
                std::copy_n(full->Row(y), full->RowBytes(), picture->Row(y));
            }
            const auto read = Rewritten(PngCodec(), *picture);
            ASSERT_TRUE(read);
            EXPECT_EQ(read->Info().palette.size(), length + 1);
            EXPECT_EQ(ColorsOf(*read), ColorsOf(*picture));
        }
    }
}

TEST(PngWriting, ResolutionIsInDotsPerMetreRounded) {
    EXPECT_EQ(ChunkData(PngWrittenWith({300, 72}), "pHYs"), std::string("\x00\x00\x2E\x23\x00\x00\x0B\x13\x01", 9));
}

TEST(PngWriting, UnknownResolutionIsThatOfTheScreen) {
    EXPECT_EQ(ChunkData(PngWrittenWith({}), "pHYs"), std::string("\x00\x00\x0E\xC4\x00\x00\x0E\xC4\x01", 9));
}

TEST(PngWriting, ResolutionsOutOfRangeAreBroughtIntoIt) {
    EXPECT_EQ(ChunkData(PngWrittenWith({1e-9, 1e30}), "pHYs"), std::string("\x00\x00\x00\x01\x7F\xFF\xFF\xFF\x01", 9));
}

TEST(PngWriting, ColorsAreMarkedAsTheScreens) {
    for (const PixelFormat format : {PixelFormat::Rgb24, PixelFormat::Indexed4}) {
        const std::string bytes = BytesWritten(PngCodec(), *MakePicture(format, 3, 3));
        EXPECT_EQ(ChunkData(bytes, "sRGB"), std::string(1, '\0'));
        EXPECT_EQ(ChunkData(bytes, "gAMA"), std::string("\x00\x00\xB1\x8F", 4));
        EXPECT_EQ(ChunkData(bytes, "cHRM"), std::nullopt);
    }
}

TEST(PngWriting, SlopesArePredicted) {
    const auto slope = MakePictureOf(256, 256, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), static_cast<std::uint8_t>(x + y));
    });
    EXPECT_LT(BytesWritten(PngCodec(), *slope).size(), 256u * 256 * 4 / 100);
}

TEST(PngWriting, FullDiskIsTheWritersStatus) {
    const auto noise =
        MakePictureOf(400, 400, [](auto x, auto y) { return (x * 2654435761u) ^ (y * 40503u * 97u) * (x + 3); });
    ASSERT_GT(BytesWritten(PngCodec(), *noise).size(), 200000u);
    for (const std::size_t room : {0u, 70000u}) {
        MemoryOutput file(room);
        EXPECT_EQ(PngCodec().write(*noise, {}, {}, file), MemoryOutput::DiskFull);
    }
}

TEST(PngWriting, BrokenSourceIsTheWritersStatus) {
    const std::string whole = BytesWritten(PngCodec(), *MakePicture(PixelFormat::Argb32, 64, 64));
    const auto cut = OpenBytes(PngCodec(), whole.substr(0, whole.size() - 40));
    ASSERT_TRUE(cut.Ok());
    MemoryOutput file;
    EXPECT_EQ(PngCodec().write(**cut, {}, {}, file), UndecodableContent);
}

} // namespace
