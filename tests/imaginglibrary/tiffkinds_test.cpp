// Every kind of sample that TIFF files have, in every way to lay them down.
#include "tests/support/pictures.h"
#include "tests/support/tiffmaker.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

// What a pixel must look like, from its samples.
using ColorFrom = std::function<Color(const Samples& samples, int bits)>;

struct TiffKindRow {
    const char* name;
    int photometric;
    int bits;
    int samples;
    std::vector<std::uint16_t> extraSamples;
    PixelFormat format;
    ColorFrom color;
};

Color GreyAlphaFrom(const Samples& s, int bits) {
    return (GreyFrom(s, bits) & 0x00FFFFFF) | (Color{Scaled(s[1], bits)} << 24);
}

Color RgbaFrom(const Samples& s, int bits) {
    return MakeColor(Scaled(s[0], bits), Scaled(s[1], bits), Scaled(s[2], bits), Scaled(s[3], bits));
}

Color CmykFrom(const Samples& s, int bits) {
    const auto light = [&](unsigned ink) {
        return static_cast<std::uint8_t>(((255u - Scaled(ink, bits)) * (255u - Scaled(s[3], bits)) + 127) / 255);
    };
    return MakeColor(light(s[0]), light(s[1]), light(s[2]));
}

// An entry's colour follows from its index alone.
std::uint16_t Entry(unsigned index, unsigned channel) {
    return static_cast<std::uint16_t>(((index * 37 + channel * 101 + 5) & 0xFF) * 257);
}

Color IndexFrom(const Samples& s, int) {
    return MakeColor(static_cast<std::uint8_t>(Entry(s[0], 0)), static_cast<std::uint8_t>(Entry(s[0], 1)),
                     static_cast<std::uint8_t>(Entry(s[0], 2)));
}

std::vector<std::uint16_t> ColorMap(int bits) {
    std::vector<std::uint16_t> map;
    for (unsigned channel = 0; channel < 3; ++channel) {
        for (unsigned index = 0; index < 1u << bits; ++index) {
            map.push_back(Entry(index, channel));
        }
    }
    return map;
}

const std::vector<TiffKindRow>& TiffKindRows() {
    constexpr int BlackIsZero = PHOTOMETRIC_MINISBLACK;
    constexpr int WhiteIsZero = PHOTOMETRIC_MINISWHITE;
    constexpr std::uint16_t Unassociated = EXTRASAMPLE_UNASSALPHA;
    constexpr std::uint16_t Unspecified = EXTRASAMPLE_UNSPECIFIED;
    static const std::vector<TiffKindRow> kinds{
        {"Bilevel", BlackIsZero, 1, 1, {}, PixelFormat::Indexed1, GreyFrom},
        {"BilevelFromWhite", WhiteIsZero, 1, 1, {}, PixelFormat::Indexed1, InvertedGreyFrom},
        {"Grey2", BlackIsZero, 2, 1, {}, PixelFormat::Indexed4, GreyFrom},
        {"Grey2FromWhite", WhiteIsZero, 2, 1, {}, PixelFormat::Indexed4, InvertedGreyFrom},
        {"Grey4", BlackIsZero, 4, 1, {}, PixelFormat::Indexed4, GreyFrom},
        {"Grey4FromWhite", WhiteIsZero, 4, 1, {}, PixelFormat::Indexed4, InvertedGreyFrom},
        {"Grey8", BlackIsZero, 8, 1, {}, PixelFormat::Indexed8, GreyFrom},
        {"Grey8FromWhite", WhiteIsZero, 8, 1, {}, PixelFormat::Indexed8, InvertedGreyFrom},
        {"Grey12", BlackIsZero, 12, 1, {}, PixelFormat::Indexed8, GreyFrom},
        {"Grey16", BlackIsZero, 16, 1, {}, PixelFormat::Indexed8, GreyFrom},
        {"Grey16FromWhite", WhiteIsZero, 16, 1, {}, PixelFormat::Indexed8, InvertedGreyFrom},
        {"GreyAlpha8", BlackIsZero, 8, 2, {Unassociated}, PixelFormat::Argb32, GreyAlphaFrom},
        {"GreyAlpha16", BlackIsZero, 16, 2, {Unassociated}, PixelFormat::Argb32, GreyAlphaFrom},
        {"GreyAndSomething", BlackIsZero, 8, 2, {Unspecified}, PixelFormat::Argb32, GreyAlphaFrom},
        {"GreyAndUndeclared", BlackIsZero, 8, 2, {}, PixelFormat::Argb32, GreyAlphaFrom},
        {"GreyAndBands", BlackIsZero, 8, 3, {}, PixelFormat::Indexed8, GreyFrom},
        {"GreyAlphaAndBand", BlackIsZero, 8, 3, {Unassociated, Unspecified}, PixelFormat::Argb32, GreyAlphaFrom},
        {"Palette1", PHOTOMETRIC_PALETTE, 1, 1, {}, PixelFormat::Indexed1, IndexFrom},
        {"Palette2", PHOTOMETRIC_PALETTE, 2, 1, {}, PixelFormat::Indexed4, IndexFrom},
        {"Palette4", PHOTOMETRIC_PALETTE, 4, 1, {}, PixelFormat::Indexed4, IndexFrom},
        {"Palette8", PHOTOMETRIC_PALETTE, 8, 1, {}, PixelFormat::Indexed8, IndexFrom},
        {"Rgb4", PHOTOMETRIC_RGB, 4, 3, {}, PixelFormat::Rgb24, RgbFrom},
        {"Rgb8", PHOTOMETRIC_RGB, 8, 3, {}, PixelFormat::Rgb24, RgbFrom},
        {"Rgb16", PHOTOMETRIC_RGB, 16, 3, {}, PixelFormat::Rgb48, RgbFrom},
        {"Rgba8", PHOTOMETRIC_RGB, 8, 4, {Unassociated}, PixelFormat::Argb32, RgbaFrom},
        {"Rgba16", PHOTOMETRIC_RGB, 16, 4, {Unassociated}, PixelFormat::Argb32, RgbaFrom},
        {"RgbAndSomething", PHOTOMETRIC_RGB, 8, 4, {Unspecified}, PixelFormat::Argb32, RgbaFrom},
        {"RgbAndUndeclared", PHOTOMETRIC_RGB, 8, 4, {}, PixelFormat::Argb32, RgbaFrom},
        {"RgbAndUndeclared16", PHOTOMETRIC_RGB, 16, 4, {}, PixelFormat::Argb32, RgbaFrom},
        {"RgbAndTwoUndeclared", PHOTOMETRIC_RGB, 8, 5, {}, PixelFormat::Argb32, RgbaFrom},
        {"RgbaAndSomething", PHOTOMETRIC_RGB, 8, 5, {Unassociated, Unspecified}, PixelFormat::Argb32, RgbaFrom},
        {"Cmyk8", PHOTOMETRIC_SEPARATED, 8, 4, {}, PixelFormat::Rgb24, CmykFrom},
        {"Cmyk16", PHOTOMETRIC_SEPARATED, 16, 4, {}, PixelFormat::Rgb24, CmykFrom},
    };
    return kinds;
}

class TiffKind : public testing::TestWithParam<TiffKindRow> {
  protected:
    TiffSpec Spec() const {
        const TiffKindRow& kind = GetParam();
        TiffSpec spec;
        spec.photometric = kind.photometric;
        spec.bits = kind.bits;
        spec.samples = kind.samples;
        spec.extraSamples = kind.extraSamples;
        if (kind.photometric == PHOTOMETRIC_PALETTE) {
            spec.colorMap = ColorMap(kind.bits);
        }
        return spec;
    }

    void ExpectReadRight(const TiffSpec& spec) const {
        const TiffKindRow& kind = GetParam();
        const auto tiff =
            Opened(TiffCodec(),
                   MakeTiff(spec, [&](auto x, auto y, unsigned sample) { return Mixed(x, y, sample, kind.bits); }));
        ASSERT_NE(tiff, nullptr);
        EXPECT_EQ(tiff->Info().format, kind.format);
        std::vector<Color> expected;
        for (std::uint32_t y = 0; y < spec.height; ++y) {
            for (std::uint32_t x = 0; x < spec.width; ++x) {
                Samples samples;
                for (unsigned sample = 0; sample < samples.size(); ++sample) {
                    samples[sample] = Mixed(x, y, sample, kind.bits);
                }
                expected.push_back(kind.color(samples, kind.bits));
            }
        }
        EXPECT_EQ(ColorsOf(*tiff), expected);
    }
};

TEST_P(TiffKind, IsReadFromStrips) { ExpectReadRight(Spec()); }

TEST_P(TiffKind, IsReadFromASingleStrip) {
    TiffSpec spec = Spec();
    spec.rowsPerStrip = spec.height;
    spec.compression = COMPRESSION_LZW;
    ExpectReadRight(spec);
}

TEST_P(TiffKind, IsReadFromTiles) {
    TiffSpec spec = Spec();
    spec.tileSide = 16;
    ExpectReadRight(spec);
}

TEST_P(TiffKind, IsReadFromPlanes) {
    TiffSpec spec = Spec();
    spec.planar = PLANARCONFIG_SEPARATE;
    ExpectReadRight(spec);
}

TEST_P(TiffKind, IsReadFromTilesOfPlanes) {
    TiffSpec spec = Spec();
    spec.planar = PLANARCONFIG_SEPARATE;
    spec.tileSide = 16;
    ExpectReadRight(spec);
}

TEST_P(TiffKind, IsReadInBigEndianOrder) {
    TiffSpec spec = Spec();
    spec.mode = "wb";
    ExpectReadRight(spec);
}

TEST_P(TiffKind, IsReadFromBigTiff) {
    TiffSpec spec = Spec();
    spec.mode = "w8";
    ExpectReadRight(spec);
}

INSTANTIATE_TEST_SUITE_P(AllOf, TiffKind, testing::ValuesIn(TiffKindRows()),
                         [](const auto& param) { return std::string(param.param.name); });

} // namespace
