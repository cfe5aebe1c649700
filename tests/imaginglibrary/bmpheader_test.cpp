// Headers, palettes and masks of BMP files at the edges of what is allowed.
#include "tests/support/bmpmaker.h"
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

class BmpHeader : public testing::Test {
  protected:
    Result<std::unique_ptr<Decoder>> Open(const BmpFile& file) { return OpenBytes(file.Whole()); }

    Result<std::unique_ptr<Decoder>> OpenBytes(const std::string& bytes) {
        WriteBytes(folder_ / "picture.bmp", bytes);
        return OpenPicture(folder_ / "picture.bmp");
    }

    std::vector<Color> Colors(const BmpFile& file) { return ColorsOfBytes(file.Whole()); }

    std::vector<Color> ColorsOfBytes(const std::string& bytes) {
        const auto picture = OpenBytes(bytes);
        EXPECT_TRUE(picture.Ok());
        return picture.Ok() ? ColorsOf(**picture) : std::vector<Color>{};
    }

    TemporaryFolder folder_;
};

std::string WithPixelOffset(std::string bytes, std::size_t offset) {
    return bytes.replace(10, 4, Number32(static_cast<std::uint32_t>(offset)));
}

TEST_F(BmpHeader, PixelOffsetCountsOnlyBetweenTheFileHeaderAndTheEnd) {
    const std::string whole = BmpFile{.width = 1, .height = 1, .pixels = Bytes({1, 2, 3, 0})}.Whole();
    const std::vector<Color> behindHeader{MakeColor(3, 2, 1)};
    for (const std::size_t offset : {std::size_t{0}, std::size_t{14}, whole.size(), whole.size() + 1}) {
        EXPECT_EQ(ColorsOfBytes(WithPixelOffset(whole, offset)), behindHeader) << offset;
    }
    EXPECT_EQ(ColorsOfBytes(WithPixelOffset(whole, 15)), std::vector<Color>{MakeColor(0, 0, 0)});
    const auto atLastByte = OpenBytes(WithPixelOffset(whole, whole.size() - 1));
    ASSERT_TRUE(atLastByte.Ok());
    EXPECT_EQ(ReadAllRows(**atLastByte), UndecodableContent);
}

TEST_F(BmpHeader, PixelsMayStandBehindAGap) {
    const std::string whole = BmpFile{.width = 1, .height = 1, .pixels = "gap!" + Bytes({1, 2, 3, 0})}.Whole();
    EXPECT_EQ(ColorsOfBytes(WithPixelOffset(whole, 58)), std::vector<Color>{MakeColor(3, 2, 1)});
}

TEST_F(BmpHeader, PaletteHasNoMoreEntriesThanTheDepthAllows) {
    const std::string two = Bytes({0, 0, 255, 0, 255, 0, 0, 0});
    for (const std::uint32_t claimed : {2u, 3u, 256u, 0xFFFFFFFFu}) {
        const auto picture = Open({.height = 1,
                                   .bits = 1,
                                   .colorsUsed = claimed,
                                   .behindHeader = two,
                                   .pixels = Bytes({0x40, 0, 0, 0}),
                                   .namesPixelOffset = false});
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ((*picture)->Info().palette, (Palette{Red, Blue})) << claimed;
        EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue})) << claimed;
    }
}

TEST_F(BmpHeader, ShortPaletteIsFollowedByThePixels) {
    EXPECT_EQ(Colors({.height = 1,
                      .bits = 8,
                      .colorsUsed = 1,
                      .behindHeader = Bytes({7, 8, 9, 0}),
                      .pixels = Bytes({0, 1, 0, 0}),
                      .namesPixelOffset = false}),
              (std::vector<Color>{MakeColor(9, 8, 7), Black}));
}

TEST_F(BmpHeader, OldPaletteIsFollowedByThePixels) {
    EXPECT_EQ(Colors({.headerBytes = 12,
                      .height = 1,
                      .bits = 1,
                      .behindHeader = Bytes({0, 0, 255, 255, 0, 0}),
                      .pixels = Bytes({0x40, 0, 0, 0}),
                      .namesPixelOffset = false}),
              (std::vector<Color>{Red, Blue}));
}

TEST_F(BmpHeader, FourthByteOfAPaletteEntryIsNoAlpha) {
    const auto picture = Open({.height = 1,
                               .bits = 1,
                               .behindHeader = Bytes({1, 2, 3, 0x55, 4, 5, 6, 0xFF}),
                               .pixels = Bytes({0x40, 0, 0, 0})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().palette, (Palette{0xFF030201, 0xFF060504}));
}

TEST_F(BmpHeader, LengthsOfNoHeaderAreUndecodable) {
    const std::string whole =
        BmpFile{.headerBytes = 124, .width = 1, .height = 1, .pixels = Bytes({1, 2, 3, 0})}.Whole();
    for (const std::uint32_t length : {0u, 11u, 13u, 15u, 125u}) {
        std::string bytes = whole;
        bytes.replace(14, 4, Number32(length));
        EXPECT_EQ(OpenBytes(bytes).GetStatus(), UndecodableContent) << length;
    }
}

TEST_F(BmpHeader, ShortHeaderHasNothingBehindItsEnd) {
    // What stands where a longer one has compression and resolution are pixels here.
    const std::string pixels = Bytes({1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0});
    const auto picture = Open({.headerBytes = 16, .width = 1, .height = 4, .pixels = pixels});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().resolution.horizontal, 0);
    EXPECT_EQ(ColorsOf(**picture),
              (std::vector<Color>{MakeColor(12, 11, 10), MakeColor(9, 8, 7), MakeColor(6, 5, 4), MakeColor(3, 2, 1)}));
}

TEST_F(BmpHeader, SidesUpToTheLimitAreAccepted) {
    EXPECT_TRUE(Open({.width = 65535, .height = 1, .pixels = "x"}).Ok());
    EXPECT_TRUE(Open({.width = 1, .height = 65535, .pixels = "x"}).Ok());
    EXPECT_TRUE(Open({.width = 1, .height = -65535, .pixels = "x"}).Ok());
    EXPECT_EQ(Open({.width = 65536, .height = 1, .pixels = "x"}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.width = 1, .height = 65536, .pixels = "x"}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.width = 1, .height = -65536, .pixels = "x"}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.width = 1, .height = 0, .pixels = "x"}).GetStatus(), Status::InvalidParameter);
}

TEST_F(BmpHeader, DepthsThatNoCompressionHasAreUndecodable) {
    struct {
        std::uint32_t compression;
        std::vector<unsigned> bits;
    } const known[] = {{0, {1, 4, 8, 16, 24, 32}}, {1, {8}}, {2, {4}}, {3, {16, 32}}, {6, {16, 32}}};
    for (const auto& [compression, depths] : known) {
        for (const unsigned bits : {0u, 1u, 2u, 4u, 8u, 15u, 16u, 24u, 32u, 64u}) {
            const bool isKnown = std::ranges::find(depths, bits) != depths.end();
            const auto picture = Open({.bits = bits, .compression = compression, .pixels = std::string(1100, 'x')});
            EXPECT_EQ(picture.GetStatus(), isKnown ? Status::Ok : UndecodableContent) << compression << ", " << bits;
        }
    }
}

TEST_F(BmpHeader, SixtyFourBytesHaveNoMasks) {
    const std::string runs = Bytes({2, 1, 0, 1});
    BmpFile rle = RleFile(8, 2, 1, runs);
    rle.headerBytes = 64;
    EXPECT_EQ(Colors(rle), (std::vector<Color>{White, White}));
    for (const std::uint32_t compression : {3u, 6u}) {
        const BmpFile masked{.headerBytes = 64, .height = 1, .bits = 16, .compression = compression, .pixels = "1234"};
        EXPECT_EQ(Open(masked).GetStatus(), UndecodableContent);
    }
}

TEST_F(BmpHeader, MasksBehindTheHeaderAreFollowedByThePixels) {
    const std::string masks = Number32(0xFF) + Number32(0xFF00) + Number32(0xFF0000);
    BmpFile file{.height = 1,
                 .bits = 32,
                 .compression = 3,
                 .behindHeader = masks,
                 .pixels = Bytes({255, 0, 0, 9, 0, 0, 255, 0}),
                 .namesPixelOffset = false};
    EXPECT_EQ(Colors(file), (std::vector<Color>{Red, Blue}));
    file.compression = 6;
    file.behindHeader += Number32(0xFF000000);
    EXPECT_EQ(Colors(file), (std::vector<Color>{Red, Blue}));
}

TEST_F(BmpHeader, MasksAreInTheHeaderFrom52BytesOn) {
    for (const std::uint32_t length : {52u, 56u}) {
        EXPECT_EQ(Colors({.headerBytes = length,
                          .height = 1,
                          .bits = 32,
                          .compression = 3,
                          .masks = Number32(0xFF) + Number32(0xFF00) + Number32(0xFF0000),
                          .pixels = Bytes({255, 0, 0, 9, 0, 0, 255, 0}),
                          .namesPixelOffset = false}),
                  (std::vector<Color>{Red, Blue}))
            << length;
    }
}

std::string SixteenBitMasks(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return Number32(red) + Number32(green) + Number32(blue);
}

TEST_F(BmpHeader, MasksOf555AreThePlainForm) {
    const auto picture = Open({.height = 1,
                               .bits = 16,
                               .compression = 3,
                               .behindHeader = SixteenBitMasks(0x7C00, 0x03E0, 0x001F),
                               .pixels = Bytes({0x00, 0x7C, 0x1F, 0x00})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb555);
}

TEST_F(BmpHeader, OneMaskThatDiffersMakesTheFormUnusual) {
    const std::string others[] = {SixteenBitMasks(0x7800, 0x03E0, 0x001F), SixteenBitMasks(0x7C00, 0x03C0, 0x001F),
                                  SixteenBitMasks(0x7C00, 0x03E0, 0x001E), SixteenBitMasks(0xF800, 0x07E0, 0x001E)};
    for (const std::string& masks : others) {
        const auto picture =
            Open({.height = 1, .bits = 16, .compression = 3, .behindHeader = masks, .pixels = std::string(4, '\0')});
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb32);
    }
}

TEST_F(BmpHeader, ChannelWithoutAMaskIsBlack) {
    const auto colors = [&](std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
        return Colors({.width = 1,
                       .height = 1,
                       .bits = 16,
                       .compression = 3,
                       .behindHeader = SixteenBitMasks(red, green, blue),
                       .pixels = Bytes({0xFF, 0xFF, 0, 0})});
    };
    EXPECT_EQ(colors(0x000F, 0, 0), std::vector<Color>{Red});
    EXPECT_EQ(colors(0, 0x000F, 0), std::vector<Color>{Green});
    EXPECT_EQ(colors(0, 0, 0x000F), std::vector<Color>{Blue});
    EXPECT_EQ(colors(0, 0, 0), std::vector<Color>{White}) << "no mask at all is the plain form";
}

TEST_F(BmpHeader, ChannelsOfMasksAreStretchedToTheNearestLevel) {
    // Ten bits of red, where 2 of 1023 is just below half a level and 3 above it; three of green, two of blue.
    const auto value = [](std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
        return Number32(red << 20 | green << 10 | blue << 3);
    };
    EXPECT_EQ(Colors({.width = 4,
                      .height = 1,
                      .bits = 32,
                      .compression = 3,
                      .behindHeader = Number32(0x3FF00000) + Number32(0x1C00) + Number32(0x18),
                      .pixels = value(2, 1, 1) + value(3, 3, 2) + value(512, 5, 3) + value(1023, 7, 0)}),
              (std::vector<Color>{MakeColor(0, 36, 85), MakeColor(1, 109, 170), MakeColor(128, 182, 255),
                                  MakeColor(255, 255, 0)}));
}

TEST_F(BmpHeader, FourthByteOfMaskedPixelsIs255) {
    const auto picture = Open({.height = 1,
                               .bits = 32,
                               .compression = 3,
                               .behindHeader = Number32(0xFF) + Number32(0xFF00) + Number32(0xFF0000),
                               .pixels = Bytes({1, 2, 3, 4, 5, 6, 7, 8})});
    ASSERT_TRUE(picture.Ok());
    std::array<std::uint8_t, 10> row{};
    ASSERT_EQ((*(*picture)->OpenRows())->ReadRow(row.data()), Status::Ok);
    EXPECT_EQ(row, (std::array<std::uint8_t, 10>{3, 2, 1, 255, 7, 6, 5, 255, 0, 0}));
}

TEST_F(BmpHeader, ResolutionsOfBothDirectionsAreTheirOwn) {
    std::string bytes = BmpFile{.width = 1, .height = 1, .pixels = Bytes({1, 2, 3, 0})}.Whole();
    bytes.replace(38, 8, Number32(1000) + Number32(2000));
    const auto picture = OpenBytes(bytes);
    ASSERT_TRUE(picture.Ok());
    EXPECT_DOUBLE_EQ((*picture)->Info().resolution.horizontal, 25.4);
    EXPECT_DOUBLE_EQ((*picture)->Info().resolution.vertical, 50.8);
}

} // namespace
