// JPEG files of every kind that is read, and what becomes of them.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

// The colours that samples stand for, pixel by pixel.
std::vector<Color> Expected(const JpegFile& file, const std::function<Color(const std::array<unsigned, 4>&)>& mix) {
    std::vector<Color> colors;
    for (unsigned y = 0; y < file.height; ++y) {
        for (unsigned x = 0; x < file.width; ++x) {
            colors.push_back(
                mix({SmoothSample(x, y, 0), SmoothSample(x, y, 1), SmoothSample(x, y, 2), SmoothSample(x, y, 3)}));
        }
    }
    return colors;
}

Color MixLight(const std::array<unsigned, 4>& samples) {
    return MakeColor(static_cast<std::uint8_t>(samples[0]), static_cast<std::uint8_t>(samples[1]),
                     static_cast<std::uint8_t>(samples[2]));
}

// `samples` tell how much paper is left bare.
Color MixBarePaper(const std::array<unsigned, 4>& samples) {
    return MakeColor(static_cast<std::uint8_t>(samples[0] * samples[3] / 255),
                     static_cast<std::uint8_t>(samples[1] * samples[3] / 255),
                     static_cast<std::uint8_t>(samples[2] * samples[3] / 255));
}

Color MixInk(const std::array<unsigned, 4>& samples) {
    return MixBarePaper({255 - samples[0], 255 - samples[1], 255 - samples[2], 255 - samples[3]});
}

constexpr double GoodLikeness = 38; // dB

TEST(Jpeg, ColorIsTrueColor) {
    const JpegFile file;
    const auto picture = Opened(JpegCodec(), MakeJpeg(file));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().format, PixelFormat::Rgb24);
    EXPECT_EQ(picture->Info().width, file.width);
    EXPECT_EQ(picture->Info().height, file.height);
    EXPECT_TRUE(picture->Info().palette.empty());
    EXPECT_GT(PeakSignalToNoise(ColorsOf(*picture), Expected(file, MixLight)), GoodLikeness);
}

TEST(Jpeg, GreyIsIndexedWithAllGreys) {
    const JpegFile file{.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE};
    const auto picture = Opened(JpegCodec(), MakeJpeg(file));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().format, PixelFormat::Indexed8);
    EXPECT_EQ(picture->Info().palette, GreyPalette(256));
    const auto grey = [](const std::array<unsigned, 4>& samples) {
        return MixLight({samples[0], samples[0], samples[0], 0});
    };
    EXPECT_GT(PeakSignalToNoise(ColorsOf(*picture), Expected(file, grey)), GoodLikeness);
}

TEST(Jpeg, SizesThatFillNoBlockAreWhole) {
    for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {8u, 8u}, {17u, 3u}, {65u, 33u}}) {
        const JpegFile file{.width = width, .height = height, .horizontalSampling = 2, .verticalSampling = 2};
        EXPECT_GT(PeakSignalToNoise(ColorsOf(JpegCodec(), MakeJpeg(file)), Expected(file, MixLight)), 30)
            << width << 'x' << height;
    }
}

TEST(Jpeg, StoredRedGreenBlueIsNotTakenForLuminance) {
    const JpegFile file{.stored = JCS_RGB, .hasAdobeMarker = true};
    EXPECT_GT(PeakSignalToNoise(ColorsOf(JpegCodec(), MakeJpeg(file)), Expected(file, MixLight)), GoodLikeness);
}

TEST(Jpeg, ScansAndCodingsOfTheSameCoefficientsLookTheSame) {
    for (const int sampling : {1, 2}) {
        JpegFile file{.horizontalSampling = sampling, .verticalSampling = sampling};
        const std::vector<Color> colors = ColorsOf(JpegCodec(), MakeJpeg(file));
        file.restartInterval = 1;
        EXPECT_EQ(ColorsOf(JpegCodec(), MakeJpeg(file)), colors) << "restart markers";
        for (const JpegScans scans : {JpegScans::One, JpegScans::OnePerComponent, JpegScans::Progressive}) {
            file.scans = scans;
            file.isArithmetic = false;
            EXPECT_EQ(ColorsOf(JpegCodec(), MakeJpeg(file)), colors) << static_cast<int>(scans);
#if defined(C_ARITH_CODING_SUPPORTED) && defined(D_ARITH_CODING_SUPPORTED)
            file.isArithmetic = true;
            EXPECT_EQ(ColorsOf(JpegCodec(), MakeJpeg(file)), colors) << static_cast<int>(scans) << ", arithmetic";
#endif
        }
    }
}

TEST(Jpeg, ProgressiveGreyIsRead) {
    JpegFile file{.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE};
    const std::vector<Color> colors = ColorsOf(JpegCodec(), MakeJpeg(file));
    file.scans = JpegScans::Progressive;
    EXPECT_EQ(ColorsOf(JpegCodec(), MakeJpeg(file)), colors);
}

TEST(Jpeg, InksOfAdobeFilesAreStoredInverted) {
    const JpegFile file{.given = JCS_CMYK, .stored = JCS_CMYK, .hasAdobeMarker = true};
    const auto picture = Opened(JpegCodec(), MakeJpeg(file));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Info().format, PixelFormat::Rgb24);
    EXPECT_GT(PeakSignalToNoise(ColorsOf(*picture), Expected(file, MixBarePaper)), GoodLikeness);
}

TEST(Jpeg, InksOfOtherFilesAreStoredAsTheyAre) {
    const JpegFile file{.given = JCS_CMYK, .stored = JCS_CMYK};
    EXPECT_GT(PeakSignalToNoise(ColorsOf(JpegCodec(), MakeJpeg(file)), Expected(file, MixInk)), GoodLikeness);
}

TEST(Jpeg, InksMayBeStoredAsLuminance) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::Progressive}) {
        const JpegFile file{.given = JCS_CMYK, .stored = JCS_YCCK, .scans = scans, .hasAdobeMarker = true};
        EXPECT_GT(PeakSignalToNoise(ColorsOf(JpegCodec(), MakeJpeg(file)), Expected(file, MixBarePaper)), GoodLikeness);
    }
}

struct DensityCase {
    JpegFile file;
    double horizontal;
    double vertical;
};

TEST(Jpeg, ResolutionIsTheDensityWithAUnit) {
    const DensityCase cases[] = {
        {{.densityUnit = 1, .horizontalDensity = 300, .verticalDensity = 72}, 300, 72},
        {{.densityUnit = 2, .horizontalDensity = 100, .verticalDensity = 50}, 254, 127},
        {{.densityUnit = 0, .horizontalDensity = 4, .verticalDensity = 3}, 0, 0},
        {{.densityUnit = 3, .horizontalDensity = 300, .verticalDensity = 300}, 0, 0},
        {{.stored = JCS_RGB, .densityUnit = 1, .horizontalDensity = 300, .verticalDensity = 300}, 0, 0}, // not JFIF
    };
    for (const DensityCase& density : cases) {
        const auto picture = Opened(JpegCodec(), MakeJpeg(density.file));
        ASSERT_TRUE(picture);
        EXPECT_DOUBLE_EQ(picture->Info().resolution.horizontal, density.horizontal);
        EXPECT_DOUBLE_EQ(picture->Info().resolution.vertical, density.vertical);
    }
}

TEST(Jpeg, TwoReadersOfOnePictureDoNotDisturbEachOther) {
    for (const JpegScans scans : {JpegScans::One, JpegScans::Progressive}) {
        const auto picture = Opened(JpegCodec(), MakeJpeg({.width = 40, .height = 64, .scans = scans}));
        ASSERT_TRUE(picture);
        ExpectIndependentReaders(*picture);
    }
}

TEST(Jpeg, ReadersOutliveTheirPicture) {
    auto picture = Opened(JpegCodec(), MakeJpeg({}));
    ASSERT_TRUE(picture);
    std::vector<std::uint8_t> row(BytesPerRow(picture->Info().format, picture->Info().width));
    auto rows = picture->OpenRows();
    ASSERT_TRUE(rows.Ok());
    picture.reset();
    EXPECT_EQ((*rows)->ReadRow(row.data()), Status::Ok);
}

struct ReductionCase {
    std::uint32_t askedWidth, askedHeight;
    double scale;
    std::uint32_t width, height;
};

TEST(Jpeg, ReductionIsTheSmallestThatIsStillLargeEnough) {
    const auto picture = Opened(JpegCodec(), MakeJpeg({.width = 161, .height = 90}));
    ASSERT_TRUE(picture);
    for (const ReductionCase& reduction :
         {ReductionCase{1, 1, 0.125, 21, 12}, ReductionCase{20, 11, 0.125, 21, 12}, ReductionCase{21, 1, 0.25, 41, 23},
          ReductionCase{1, 12, 0.25, 41, 23}, ReductionCase{1, 23, 0.5, 81, 45}, ReductionCase{80, 45, 0.5, 81, 45}}) {
        const auto reduced = picture->ReducedTo(reduction.askedWidth, reduction.askedHeight);
        ASSERT_TRUE(reduced);
        EXPECT_EQ(reduced->scale, reduction.scale);
        EXPECT_EQ(reduced->picture->Info().width, reduction.width);
        EXPECT_EQ(reduced->picture->Info().height, reduction.height);
        EXPECT_EQ(ReadAllRows(*reduced->picture), Status::Ok);
    }
    EXPECT_FALSE(picture->ReducedTo(81, 1));
    EXPECT_FALSE(picture->ReducedTo(1, 46));
}

TEST(Jpeg, ReductionLooksLikeTheAverageOfWhatItCovers) {
    for (const J_COLOR_SPACE stored : {JCS_YCbCr, JCS_GRAYSCALE}) {
        const JpegFile file{
            .width = 128, .height = 64, .stored = stored, .horizontalSampling = 2, .verticalSampling = 2};
        const auto slope = [](unsigned x, unsigned y, int channel) {
            return static_cast<std::uint8_t>(channel == 1 ? y * 3 : x + 20 * static_cast<unsigned>(channel));
        };
        const auto picture = Opened(JpegCodec(), MakeJpeg(file, slope));
        ASSERT_TRUE(picture);
        const std::vector<Color> full = ColorsOf(*picture);
        const auto reduced = picture->ReducedTo(16, 8);
        ASSERT_TRUE(reduced);
        ASSERT_EQ(reduced->picture->Info().width, 16u);
        std::vector<Color> averages;
        for (std::size_t top = 0; top < 64; top += 8) {
            for (std::size_t left = 0; left < 128; left += 8) {
                std::array<unsigned, 3> sums{};
                for (std::size_t i = 0; i < 64; ++i) {
                    const Color color = full[(top + i / 8) * 128 + left + i % 8];
                    sums[0] += RedOf(color);
                    sums[1] += GreenOf(color);
                    sums[2] += BlueOf(color);
                }
                averages.push_back(MixLight({sums[0] / 64, sums[1] / 64, sums[2] / 64, 0}));
            }
        }
        EXPECT_LE(GreatestDifference(ColorsOf(*reduced->picture), averages), 4);
    }
}

TEST(Jpeg, ProgressivePictureHasAReductionToo) {
    const auto picture = Opened(JpegCodec(), MakeJpeg({.width = 64, .height = 64, .scans = JpegScans::Progressive}));
    ASSERT_TRUE(picture);
    const auto reduced = picture->ReducedTo(9, 9);
    ASSERT_TRUE(reduced);
    EXPECT_EQ(reduced->picture->Info().width, 16u);
    EXPECT_EQ(ColorsOf(*reduced->picture).size(), 256u);
}

} // namespace
