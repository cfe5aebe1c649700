// PNG files of every kind that is read, and what becomes of them.
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/pngfiles.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

// Every sample value there is at a depth turns up, next to unlike ones.
PngSamples MixedSamples(int depth) {
    return [depth](unsigned x, unsigned y, unsigned channel) {
        return (x * 40503 + y * 9973 + channel * 21001 + x * y * 77) & ((1u << depth) - 1);
    };
}

Palette ColorsFor(int depth, bool withAlpha) {
    Palette palette;
    for (unsigned i = 0; i < 1u << depth; ++i) {
        palette.push_back(MakeColor(static_cast<std::uint8_t>(i * 37), static_cast<std::uint8_t>(255 - i),
                                    static_cast<std::uint8_t>(i * 101),
                                    static_cast<std::uint8_t>(withAlpha ? 250 - i * 11 : 255)));
    }
    return palette;
}

// A sample brought to eight bits, rounded.
std::uint8_t ToByte(unsigned sample, int depth) {
    const unsigned greatest = (1u << depth) - 1;
    return static_cast<std::uint8_t>((sample * 255 + greatest / 2) / greatest);
}

// What the file's samples mean, by the format's own rules.
std::vector<Color> ExpectedColors(const PngFile& file, const PngSamples& samples) {
    std::vector<Color> colors;
    const bool isGrey = (file.type & PNG_COLOR_MASK_COLOR) == 0;
    for (unsigned y = 0; y < file.height; ++y) {
        for (unsigned x = 0; x < file.width; ++x) {
            if (file.type == PNG_COLOR_TYPE_PALETTE) {
                colors.push_back(file.palette[samples(x, y, 0)]);
                continue;
            }
            const unsigned red = samples(x, y, 0);
            const unsigned green = isGrey ? red : samples(x, y, 1);
            const unsigned blue = isGrey ? red : samples(x, y, 2);
            unsigned alpha = (1u << file.depth) - 1;
            if ((file.type & PNG_COLOR_MASK_ALPHA) != 0) {
                alpha = samples(x, y, isGrey ? 1 : 3);
            } else if (file.transparent) {
                const png_color_16& clear = *file.transparent;
                const bool isClear =
                    isGrey ? red == clear.gray : red == clear.red && green == clear.green && blue == clear.blue;
                alpha = isClear ? 0 : alpha;
            }
            colors.push_back(MakeColor(ToByte(red, file.depth), ToByte(green, file.depth), ToByte(blue, file.depth),
                                       ToByte(alpha, file.depth)));
        }
    }
    return colors;
}

struct PngKind {
    int type;
    int depth;
    bool isTransparent; // has a tRNS chunk
    PixelFormat format;
};

constexpr int Grey = PNG_COLOR_TYPE_GRAY;
constexpr int Rgb = PNG_COLOR_TYPE_RGB;
constexpr int Indexed = PNG_COLOR_TYPE_PALETTE;
constexpr int GreyAlpha = PNG_COLOR_TYPE_GRAY_ALPHA;
constexpr int RgbAlpha = PNG_COLOR_TYPE_RGB_ALPHA;

constexpr PngKind AllPngKinds[] = {
    {Grey, 1, false, PixelFormat::Indexed1},    {Grey, 1, true, PixelFormat::Argb32},
    {Grey, 2, false, PixelFormat::Argb32},      {Grey, 2, true, PixelFormat::Argb32},
    {Grey, 4, false, PixelFormat::Argb32},      {Grey, 4, true, PixelFormat::Argb32},
    {Grey, 8, false, PixelFormat::Argb32},      {Grey, 8, true, PixelFormat::Argb32},
    {Grey, 16, false, PixelFormat::Argb32},     {Grey, 16, true, PixelFormat::Argb32},
    {Rgb, 8, false, PixelFormat::Rgb24},        {Rgb, 8, true, PixelFormat::Argb32},
    {Rgb, 16, false, PixelFormat::Argb32},      {Rgb, 16, true, PixelFormat::Argb32},
    {Indexed, 1, false, PixelFormat::Indexed1}, {Indexed, 1, true, PixelFormat::Argb32},
    {Indexed, 2, false, PixelFormat::Argb32},   {Indexed, 2, true, PixelFormat::Argb32},
    {Indexed, 4, false, PixelFormat::Indexed4}, {Indexed, 4, true, PixelFormat::Argb32},
    {Indexed, 8, false, PixelFormat::Indexed8}, {Indexed, 8, true, PixelFormat::Argb32},
    {GreyAlpha, 8, false, PixelFormat::Argb32}, {GreyAlpha, 16, false, PixelFormat::Argb32},
    {RgbAlpha, 8, false, PixelFormat::Argb32},  {RgbAlpha, 16, false, PixelFormat::Argb32},
};

PngFile FileOf(const PngKind& kind) {
    PngFile file{.depth = kind.depth, .type = kind.type};
    if (kind.type == Indexed) {
        file.palette = ColorsFor(kind.depth, kind.isTransparent);
        file.hasAlphas = kind.isTransparent;
    } else if (kind.isTransparent) {
        const PngSamples samples = MixedSamples(kind.depth);
        const auto at = [&](unsigned channel) { return static_cast<png_uint_16>(samples(5, 3, channel)); };
        file.transparent = png_color_16{.index = 0, .red = at(0), .green = at(1), .blue = at(2), .gray = at(0)};
    }
    return file;
}

class PngKinds : public testing::TestWithParam<PngKind> {};

TEST_P(PngKinds, FormatIsThePlatformsForThisKind) {
    const auto picture = Opened(PngCodec(), MakePng(FileOf(GetParam()), MixedSamples(GetParam().depth)));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().format, GetParam().format);
    EXPECT_EQ(picture->Info().palette.empty(), !IsIndexed(GetParam().format));
}

TEST_P(PngKinds, PixelsAreExact) {
    PngFile file = FileOf(GetParam());
    const PngSamples samples = MixedSamples(file.depth);
    for (const auto& [width, height] : {std::pair{33u, 9u}, {1u, 1u}, {7u, 5u}, {17u, 3u}, {8u, 8u}, {3u, 65u}}) {
        file.width = width;
        file.height = height;
        for (const bool isInterlaced : {false, true}) {
            file.isInterlaced = isInterlaced;
            const auto picture = Opened(PngCodec(), MakePng(file, samples));
            ASSERT_TRUE(picture);
            EXPECT_EQ(ColorsOf(*picture), ExpectedColors(file, samples)) << width << 'x' << height << isInterlaced;
        }
        file.isInterlaced = false;
        EXPECT_EQ(ColorsOf(PngCodec(), WithLargestWindow(MakePng(file, samples))), ExpectedColors(file, samples))
            << width << 'x' << height;
    }
}

std::string NameOf(const testing::TestParamInfo<PngKind>& kind) {
    const char* const names[] = {"Grey", "", "Rgb", "Palette", "GreyAlpha", "", "RgbAlpha"};
    return names[kind.param.type] + std::to_string(kind.param.depth) + (kind.param.isTransparent ? "Transparent" : "");
}

INSTANTIATE_TEST_SUITE_P(Png, PngKinds, testing::ValuesIn(AllPngKinds), NameOf);

TEST(Png, PaletteIsAsLongAsInTheFile) {
    for (const int depth : {1, 4, 8}) {
        Palette palette = ColorsFor(depth, false);
        palette.resize(palette.size() / 2 + 1);
        const PngSamples zero = [](unsigned, unsigned, unsigned) { return 0; };
        const auto picture = Opened(PngCodec(), MakePng({.depth = depth, .type = Indexed, .palette = palette}, zero));
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->Info().palette, palette);
    }
}

TEST(Png, BlackAndWhiteGreyIsAPaletteOfTheTwo) {
    const auto picture = Opened(PngCodec(), MakePng({.depth = 1, .type = Grey}, MixedSamples(1)));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().palette, (Palette{MakeColor(0, 0, 0), MakeColor(255, 255, 255)}));
}

TEST(Png, IndexBeyondThePaletteIsOpaqueBlack) {
    const PngSamples samples = [](unsigned x, unsigned, unsigned) { return x % 3; };
    std::string bytes = MakePng({.width = 3, .height = 1, .type = Indexed, .palette = ColorsFor(2, false)}, samples);
    const std::size_t at = FindChunk(bytes, "PLTE");
    const std::string shortened = PngChunk("PLTE", std::string("\xFF\x00\x00\x00\xFF\x00", 6));
    bytes = bytes.substr(0, at) + shortened + bytes.substr(at + 12 + 4 * 3);
    const auto picture = Opened(PngCodec(), bytes);
    ASSERT_TRUE(picture);
    EXPECT_EQ(ColorsOf(*picture), (std::vector<Color>{MakeColor(255, 0, 0), MakeColor(0, 255, 0), MakeColor(0, 0, 0)}));
}

TEST(Png, ResolutionIsThatOfDotsPerMetre) {
    const auto picture =
        Opened(PngCodec(),
               MakePng({.more = [](png_structp png,
                                   png_infop info) { png_set_pHYs(png, info, 11811, 2835, PNG_RESOLUTION_METER); }},
                       MixedSamples(8)));
    ASSERT_TRUE(picture);
    EXPECT_NEAR(picture->Info().resolution.horizontal, 300, 0.01);
    EXPECT_NEAR(picture->Info().resolution.vertical, 72, 0.01);
}

TEST(Png, AspectAloneIsNoResolution) {
    const auto picture = Opened(
        PngCodec(), MakePng({.more = [](png_structp png,
                                        png_infop info) { png_set_pHYs(png, info, 4, 3, PNG_RESOLUTION_UNKNOWN); }},
                            MixedSamples(8)));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().resolution.horizontal, 0);
    EXPECT_EQ(picture->Info().resolution.vertical, 0);
}

TEST(Png, GammaDoesNotChangeTheColors) {
    PngFile file;
    const std::vector<Color> colors = ExpectedColors(file, MixedSamples(8));
    for (const png_fixed_point gamma : {45455, 100000, 20000}) {
        file.more = [gamma](png_structp png, png_infop info) {
            png_set_gAMA_fixed(png, info, gamma);
            png_set_cHRM_fixed(png, info, 31270, 32900, 60000, 33000, 25000, 60000, 15000, 6000);
        };
        EXPECT_EQ(ColorsOf(*Opened(PngCodec(), MakePng(file, MixedSamples(8)))), colors);
    }
}

TEST(Png, TwoReadersOfOnePictureDoNotDisturbEachOther) {
    for (const bool isInterlaced : {false, true}) {
        const auto picture =
            Opened(PngCodec(), MakePng({.width = 40, .height = 64, .isInterlaced = isInterlaced}, MixedSamples(8)));
        ASSERT_TRUE(picture);
        ExpectIndependentReaders(*picture);
    }
}

TEST(Png, ReadersOutliveTheirPicture) {
    for (const bool isInterlaced : {false, true}) {
        auto picture = Opened(PngCodec(), MakePng({.isInterlaced = isInterlaced}, MixedSamples(8)));
        ASSERT_TRUE(picture);
        std::vector<std::uint8_t> row(BytesPerRow(picture->Info().format, picture->Info().width));
        auto rows = picture->OpenRows();
        ASSERT_TRUE(rows.Ok());
        picture.reset();
        EXPECT_EQ((*rows)->ReadRow(row.data()), Status::Ok);
    }
}

TEST(Png, NoReductionIsCheaperThanTheWhole) {
    const auto picture = Opened(PngCodec(), MakePng({}, MixedSamples(8)));
    ASSERT_TRUE(picture);
    EXPECT_FALSE(picture->ReducedTo(1, 1));
}

} // namespace
