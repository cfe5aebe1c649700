// TIFF files of CIE L*a*b* colours, in every encoding of them.
#include "tests/support/pictures.h"
#include "tests/support/tiffmaker.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

struct LabColor {
    unsigned lightness; // of 255
    int a;
    int b;
    Color screen; // as LittleCMS shows it relative to D50, or cut off where a channel is beyond the screen's
};

// White, black, a grey, red, green, blue, skin, what lies beyond either end, and greys that are nearly black.
constexpr LabColor LabColors[] = {
    {255, 0, 0, 0xFFFFFFFF},    {0, 0, 0, 0xFF000000},      {128, 0, 0, 0xFF777777},   {136, 81, 70, 0xFFFC0000},
    {224, -79, 81, 0xFF0AFF00}, {82, 68, -112, 0xFF200FFF}, {200, 10, 10, 0xFFDABBB0}, {255, -5, 5, 0xFFF8FFF5},
    {3, 0, 0, 0xFF040404},      {10, 0, 0, 0xFF0E0E0E},
};
constexpr std::uint32_t LabWidth = std::size(LabColors);

// How a file of the kind stores one sample of a colour.
unsigned StoredLab(const TiffSpec& spec, const LabColor& color, unsigned sample) {
    const bool isWide = spec.bits == 16;
    const bool isIcc = spec.photometric == PHOTOMETRIC_ICCLAB;
    if (sample == 0) {
        return isWide ? color.lightness * (isIcc ? 256 : 257) : color.lightness;
    }
    const int chroma = (sample == 1 ? color.a : color.b) + (isIcc ? 128 : 0);
    return static_cast<unsigned>(isWide ? chroma * 256 : chroma) & (isWide ? 0xFFFF : 0xFF);
}

std::unique_ptr<Decoder> OpenLab(TiffSpec spec, const std::function<unsigned(std::uint32_t)>& alpha = {}) {
    spec.width = LabWidth;
    spec.height = 3;
    return Opened(TiffCodec(), MakeTiff(spec, [&](auto x, auto, unsigned sample) {
                      return sample < 3 ? StoredLab(spec, LabColors[x % LabWidth], sample) : alpha(x);
                  }));
}

TEST(TiffLab, EveryEncodingShowsTheSameColors) {
    std::vector<Color> expected;
    for (std::uint32_t i = 0; i < 3 * LabWidth; ++i) {
        expected.push_back(LabColors[i % LabWidth].screen);
    }
    for (const int photometric : {PHOTOMETRIC_CIELAB, PHOTOMETRIC_ICCLAB}) {
        for (const int bits : {8, 16}) {
            for (const int planar : {PLANARCONFIG_CONTIG, PLANARCONFIG_SEPARATE}) {
                const auto tiff = OpenLab({.bits = bits, .samples = 3, .photometric = photometric, .planar = planar});
                ASSERT_NE(tiff, nullptr);
                EXPECT_EQ(tiff->Info().format, PixelFormat::Rgb24);
                EXPECT_LE(GreatestDifference(ColorsOf(*tiff), expected), 1)
                    << photometric << ", " << bits << " bits, " << planar;
            }
        }
    }
}

TEST(TiffLab, GreysAreGreyAndRiseWithTheirLightness) {
    const auto tiff = Opened(TiffCodec(), MakeTiff({.width = 256, .samples = 3, .photometric = PHOTOMETRIC_CIELAB},
                                                   [](auto x, auto, unsigned sample) { return sample == 0 ? x : 0u; }));
    const auto colors = ColorsOf(*tiff);
    for (std::size_t i = 1; i < 256; ++i) {
        EXPECT_LE(RedOf(colors[i - 1]), RedOf(colors[i]));
        EXPECT_LE(std::abs(RedOf(colors[i]) - GreenOf(colors[i])), 1) << i;
        EXPECT_LE(std::abs(BlueOf(colors[i]) - GreenOf(colors[i])), 1) << i;
    }
}

TEST(TiffLab, FourthSampleIsAlpha) {
    for (const int bits : {8, 16}) {
        const unsigned most = bits == 16 ? 65535 : 255;
        const auto tiff = OpenLab(
            {.bits = bits, .samples = 4, .photometric = PHOTOMETRIC_CIELAB, .extraSamples = {EXTRASAMPLE_UNASSALPHA}},
            [&](std::uint32_t x) { return std::min(x, 5u) * most / 5; });
        ASSERT_NE(tiff, nullptr);
        EXPECT_EQ(tiff->Info().format, PixelFormat::Argb32);
        const auto colors = ColorsOf(*tiff);
        EXPECT_EQ(AlphaOf(colors[0]), 0);
        EXPECT_EQ(AlphaOf(colors[3]), 153);
        EXPECT_EQ(RedOf(colors[3]), 0xFC);
    }
}

TEST(TiffLab, OtherDepthsAndTooFewSamplesAreUndecodable) {
    const auto statusOf = [](const TiffSpec& spec) {
        return ReadAllRows(TiffCodec(), MakeTiff(spec, [](auto, auto, unsigned) { return 0u; }));
    };
    EXPECT_EQ(statusOf({.bits = 4, .samples = 3, .photometric = PHOTOMETRIC_CIELAB}), UndecodableContent);
    EXPECT_EQ(statusOf({.samples = 2, .photometric = PHOTOMETRIC_CIELAB}), UndecodableContent);
}

} // namespace
