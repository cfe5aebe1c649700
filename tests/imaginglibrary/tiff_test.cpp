// TIFF files as they come: compressions, colours, tags, and readers side by side.
#include "tests/support/pictures.h"
#include "tests/support/tiffmaker.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

TEST(TiffReader, CompressionsWithoutLossAreRead) {
    for (const int compression :
         {COMPRESSION_NONE, COMPRESSION_PACKBITS, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_DEFLATE}) {
        for (const std::uint32_t tileSide : {0u, 16u}) {
            const auto tiff = Opened(
                TiffCodec(),
                MakeTiff(
                    {.samples = 3, .photometric = PHOTOMETRIC_RGB, .compression = compression, .tileSide = tileSide},
                    [](auto x, auto y, unsigned sample) { return Mixed(x, y, sample, 8); }));
            ASSERT_NE(tiff, nullptr) << compression;
            EXPECT_EQ(ColorsOf(*tiff)[37 + 2], RgbFrom({Mixed(2, 1, 0, 8), Mixed(2, 1, 1, 8), Mixed(2, 1, 2, 8)}, 8))
                << compression;
            EXPECT_EQ(ReadAllRows(*tiff), Status::Ok) << compression;
        }
    }
}

TEST(TiffReader, HorizontalDifferencesAreUndone) {
    for (const int bits : {8, 16}) {
        const auto tiff = Opened(
            TiffCodec(), MakeTiff({.bits = bits, .compression = COMPRESSION_LZW, .predictor = PREDICTOR_HORIZONTAL},
                                  [&](auto x, auto y, unsigned) { return Mixed(x, y, 0, bits); }));
        EXPECT_EQ(ColorsOf(*tiff)[37 * 3 + 4], GreyFrom({Mixed(4, 3, 0, bits)}, bits));
    }
}

TEST(TiffReader, FaxCompressionsAreReadInEitherBitOrder) {
    for (const int compression : {COMPRESSION_CCITTRLE, COMPRESSION_CCITTFAX3, COMPRESSION_CCITTFAX4}) {
        for (const int fillOrder : {FILLORDER_MSB2LSB, FILLORDER_LSB2MSB}) {
            const auto tiff =
                Opened(TiffCodec(), MakeTiff({.bits = 1,
                                              .photometric = PHOTOMETRIC_MINISWHITE,
                                              .compression = compression,
                                              .fillOrder = fillOrder},
                                             [](auto x, auto y, unsigned) { return Mixed(x / 3, y, 0, 1); }));
            const auto colors = ColorsOf(*tiff);
            for (std::uint32_t i = 0; i < colors.size(); ++i) {
                ASSERT_EQ(colors[i], InvertedGreyFrom({Mixed(i % 37 / 3, i / 37, 0, 1)}, 1)) << compression;
            }
        }
    }
}

TEST(TiffReader, JpegColorsAreRead) {
    const auto smooth = [](auto x, auto y, unsigned sample) { return 40 + x * 4 + y * 2 + sample * 10; };
    for (const int photometric : {PHOTOMETRIC_YCBCR, PHOTOMETRIC_RGB}) {
        for (const std::uint32_t tileSide : {0u, 16u}) {
            const auto tiff = Opened(TiffCodec(), MakeTiff({.samples = 3,
                                                            .photometric = photometric,
                                                            .compression = COMPRESSION_JPEG,
                                                            .rowsPerStrip = 8,
                                                            .tileSide = tileSide},
                                                           smooth));
            ASSERT_NE(tiff, nullptr);
            EXPECT_EQ(tiff->Info().format, PixelFormat::Rgb24);
            std::vector<Color> expected;
            for (std::uint32_t i = 0; i < 37 * 19; ++i) {
                expected.push_back(
                    RgbFrom({smooth(i % 37, i / 37, 0), smooth(i % 37, i / 37, 1), smooth(i % 37, i / 37, 2)}, 8));
            }
            EXPECT_GT(PeakSignalToNoise(ColorsOf(*tiff), expected), 35) << photometric << " " << tileSide;
        }
    }
}

TEST(TiffReader, ChromaticColorsThatAreNotJpegAreConverted) {
    for (const std::uint32_t tileSide : {0u, 16u}) {
        for (const int orientation : {ORIENTATION_TOPLEFT, ORIENTATION_BOTRIGHT}) {
            const auto tiff =
                Opened(TiffCodec(),
                       MakeTiff({.samples = 3,
                                 .photometric = PHOTOMETRIC_YCBCR,
                                 .compression = COMPRESSION_LZW,
                                 .tileSide = tileSide,
                                 .orientation = orientation},
                                [](auto x, auto y, unsigned sample) { return sample == 0 ? x * 3 + y * 5 : 128u; }));
            ASSERT_NE(tiff, nullptr);
            std::vector<Color> expected;
            for (std::uint32_t i = 0; i < 37 * 19; ++i) {
                expected.push_back(GreyFrom({i % 37 * 3 + i / 37 * 5}, 8));
            }
            EXPECT_LE(GreatestDifference(ColorsOf(*tiff), expected), 1) << tileSide << " " << orientation;
        }
    }
}

// 38 below the middle takes 67 from blue, and 42 above it adds 59 to red (ITU-R BT.601).
TEST(TiffReader, ChromaOfConvertedColorsCounts) {
    for (const std::uint32_t tileSide : {0u, 16u}) {
        const auto tiff = Opened(
            TiffCodec(),
            MakeTiff(
                {.samples = 3, .photometric = PHOTOMETRIC_YCBCR, .compression = COMPRESSION_LZW, .tileSide = tileSide},
                [](auto, auto, unsigned sample) { return sample == 0   ? 100u
                                                         : sample == 1 ? 90u
                                                                       : 170u; }));
        ASSERT_NE(tiff, nullptr);
        EXPECT_EQ(tiff->Info().format, PixelFormat::Rgb24);
        const std::vector<Color> expected(37 * 19, MakeColor(159, 83, 33));
        EXPECT_LE(GreatestDifference(ColorsOf(*tiff), expected), 1);
    }
}

TEST(TiffReader, OrientationIsNotApplied) {
    const auto tiff = Opened(TiffCodec(), MakeTiff({.orientation = ORIENTATION_BOTRIGHT},
                                                   [](auto x, auto y, unsigned) { return x + y * 10; }));
    EXPECT_EQ(ColorsOf(*tiff)[1], 0xFF010101);
}

TEST(TiffReader, AssociatedAlphaIsPremultiplied) {
    const auto tiff = Opened(
        TiffCodec(), MakeTiff({.samples = 4, .photometric = PHOTOMETRIC_RGB, .extraSamples = {EXTRASAMPLE_ASSOCALPHA}},
                              [](auto, auto, unsigned sample) { return sample == 3 ? 128u : 64u; }));
    EXPECT_EQ(tiff->Info().format, PixelFormat::Pargb32);
    EXPECT_EQ(ColorsOf(*tiff)[0], 0x80808080u);
}

TEST(TiffReader, Rgb48KeepsAllBits) {
    const auto tiff =
        Opened(TiffCodec(), MakeTiff({.bits = 16, .samples = 3, .photometric = PHOTOMETRIC_RGB, .mode = "wb"},
                                     [](auto, auto, unsigned sample) { return 0x1234u + sample; }));
    std::vector<std::uint8_t> row(BytesPerRow(PixelFormat::Rgb48, 37));
    ASSERT_EQ((*tiff->OpenRows())->ReadRow(row.data()), Status::Ok);
    std::array<std::uint16_t, 3> pixel;
    std::memcpy(pixel.data(), row.data(), 6);
    EXPECT_EQ(pixel, (std::array<std::uint16_t, 3>{0x1236, 0x1235, 0x1234}));
}

TEST(TiffReader, ColorMapInTheLowerBytesIsRead) {
    const auto tiff = Opened(
        TiffCodec(), MakeTiff({.bits = 1, .photometric = PHOTOMETRIC_PALETTE, .colorMap = {10, 200, 20, 210, 30, 220}},
                              [](auto x, auto, unsigned) { return x % 2; }));
    EXPECT_EQ(tiff->Info().palette, (Palette{MakeColor(10, 20, 30), MakeColor(200, 210, 220)}));
}

TEST(TiffReader, ColorMapIsInTheLowerBytesUpTo255) {
    const auto paletteOf = [](std::vector<std::uint16_t> colorMap) {
        const TiffSpec spec{.bits = 1, .photometric = PHOTOMETRIC_PALETTE, .colorMap = std::move(colorMap)};
        return Opened(TiffCodec(), MakeTiff(spec, [](auto x, auto, unsigned) { return x % 2; }))->Info().palette;
    };
    EXPECT_EQ(paletteOf({0, 255, 0, 255, 1, 254}), (Palette{MakeColor(0, 0, 1), MakeColor(255, 255, 254)}));
    EXPECT_EQ(paletteOf({0, 256, 0, 255, 1, 254}), (Palette{MakeColor(0, 0, 0), MakeColor(1, 0, 0)}));
}

TEST(TiffReader, ResolutionIsInDotsPerInch) {
    const auto resolutionOf = [](double value, int unit) {
        const auto tiff = Opened(TiffCodec(), MakeTiff({.resolution = value, .resolutionUnit = unit},
                                                       [](auto, auto, unsigned) { return 0u; }));
        return std::pair(tiff->Info().resolution.horizontal, tiff->Info().resolution.vertical);
    };
    EXPECT_EQ(resolutionOf(300, RESUNIT_INCH), std::pair(300.0, 600.0));
    EXPECT_EQ(resolutionOf(100, RESUNIT_CENTIMETER), std::pair(254.0, 508.0));
    EXPECT_EQ(resolutionOf(300, RESUNIT_NONE), std::pair(0.0, 0.0));
    EXPECT_EQ(resolutionOf(0, RESUNIT_INCH), std::pair(0.0, 0.0));
    EXPECT_EQ(resolutionOf(1000000, RESUNIT_INCH), std::pair(1000000.0, 0.0)) << "a million is the most";
    EXPECT_EQ(resolutionOf(500000.5, RESUNIT_INCH), std::pair(500000.5, 0.0));
    EXPECT_EQ(resolutionOf(500000, RESUNIT_INCH), std::pair(500000.0, 1000000.0));
}

TEST(TiffReader, TwoReadersOfOneFileDoNotDisturbEachOther) {
    for (const std::uint32_t tileSide : {0u, 16u}) {
        const auto tiff = Opened(TiffCodec(), MakeTiff({.compression = COMPRESSION_LZW, .tileSide = tileSide},
                                                       [](auto, auto y, unsigned) { return y * 5; }));
        auto first = std::move(*tiff->OpenRows());
        auto second = std::move(*tiff->OpenRows());
        std::vector<std::uint8_t> row(37);
        for (unsigned y = 0; y < 17; ++y) {
            ASSERT_EQ(first->ReadRow(row.data()), Status::Ok);
            EXPECT_EQ(row[0], y * 5);
        }
        ASSERT_EQ(second->ReadRow(row.data()), Status::Ok);
        EXPECT_EQ(row[0], 0);
        ASSERT_EQ(first->ReadRow(row.data()), Status::Ok);
        EXPECT_EQ(row[0], 17 * 5);
    }
}

TEST(TiffReader, FloatingPointIsRefused) {
    EXPECT_EQ(OpenBytes(TiffCodec(), MakeTiff({.bits = 16, .sampleFormat = SAMPLEFORMAT_IEEEFP},
                                              [](auto, auto, unsigned) { return 0u; }))
                  .GetStatus(),
              UndecodableContent);
}

} // namespace
