// TIFF files of CIE L*a*b* colours, in every encoding of them.
#include "imaginglibrary/codecs/tiff/tifflab.h"
#include "tests/support/pictures.h"
#include "tests/support/tiffmaker.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

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

// A channel of the screen before it is rounded, by the numbers of CIE 15 and IEC 61966-2-1: 24389/27 and 216/24389, the
// primaries of sRGB seen under D50.
std::array<double, 3> ScreenLevels(double lightness, double a, double b) {
    const double fy = (lightness + 16) / 116;
    const auto cubed = [](double f) { return f * f * f > 216.0 / 24389 ? f * f * f : (116 * f - 16) * 27 / 24389; };
    const double x = 0.96422 * cubed(fy + a / 500);
    const double y = cubed(fy);
    const double z = 0.82521 * cubed(fy - b / 200);
    const auto level = [](double linear) {
        const double light = std::clamp(linear, 0.0, 1.0);
        return 255 * (light > 0.0031308 ? 1.055 * std::pow(light, 1 / 2.4) - 0.055 : 12.92 * light);
    };
    return {level(3.1338561 * x - 1.6168667 * y - 0.4906146 * z), level(-0.9787684 * x + 1.9161415 * y + 0.0334540 * z),
            level(0.0719453 * x - 0.2289914 * y + 1.4052427 * z)};
}

// Half a level is lost by rounding and, where the curve is steep, a tenth by its table.
TEST(TiffLab, DarkAndLightColorsFollowTheFormula) {
    for (double lightness = 0; lightness <= 100; lightness += lightness < 20 ? 0.125 : 2.5) {
        for (const auto& [a, b] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {-4.0, 3.0}, {0.0, -6.0}, {30.0, 20.0}}) {
            const Color color = ColorFromLab(lightness, a, b);
            const auto expected = ScreenLevels(lightness, a, b);
            EXPECT_NEAR(RedOf(color), expected[0], 0.61) << lightness << ", " << a << ", " << b;
            EXPECT_NEAR(GreenOf(color), expected[1], 0.61) << lightness << ", " << a << ", " << b;
            EXPECT_NEAR(BlueOf(color), expected[2], 0.61) << lightness << ", " << a << ", " << b;
        }
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
