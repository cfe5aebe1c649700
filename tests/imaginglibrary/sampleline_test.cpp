// Reading pictures along lines between their pixels: the plain form against what is right, the quick one against it.
#include "imaginglibrary/operations/sampleline.h"

#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::uint32_t PlaceAt(double place) { return static_cast<std::uint32_t>(place * 65536); }
constexpr std::int32_t StepOf(double step) { return static_cast<std::int32_t>(step * 65536); }

std::shared_ptr<const PyramidLevel> NoisyLevel(std::uint32_t width, std::uint32_t height) {
    std::uint32_t noise = 7;
    return *PyramidLevel::Make(*MakePictureOf(width, height, [&](auto, auto) {
        noise = noise * 1664525 + 1013904223;
        return Color{noise};
    }));
}

// Grey columns of these values, one row high.
std::shared_ptr<const PyramidLevel> LevelOf(const std::vector<std::uint8_t>& values) {
    return *PyramidLevel::Make(*MakePictureOf(static_cast<std::uint32_t>(values.size()), 1, [&](auto x, auto) {
        return MakeColor(values[x], values[x], values[x]);
    }));
}

using Sampler = decltype(&SampleLineScalar);

std::vector<std::uint8_t> Sampled(Sampler sample, const PyramidLevel& level, Resampling resampling,
                                  const SampleWay& way, std::size_t count) {
    EXPECT_TRUE(way.LiesWithin(level, count));
    std::vector<std::uint8_t> pixels(count * 4 + 4, 0xA5);
    sample(level, KernelOf(resampling), way, pixels.data(), count);
    for (std::size_t i = count * 4; i < pixels.size(); ++i) {
        EXPECT_EQ(pixels[i], 0xA5) << "behind the last pixel";
    }
    pixels.resize(count * 4);
    return pixels;
}

TEST(SampleLine, FractionOfZeroGivesThePixelsThemselves) {
    const auto level = NoisyLevel(9, 7);
    for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
        for (std::uint32_t y = 0; y < 7; ++y) {
            // The pixel itself is the second of four.
            const SampleWay way{PlaceAt(1), PlaceAt(y + 1), StepOf(1), 0};
            const auto pixels = Sampled(SampleLineScalar, *level, resampling, way, 9);
            EXPECT_EQ(pixels, std::vector<std::uint8_t>(level->Row(y), level->Row(y) + 36)) << y;
        }
    }
}

TEST(SampleLine, HalfwayIsCubic) {
    const auto level = LevelOf({10, 200, 40, 90, 0});
    const SampleWay way{PlaceAt(2.5), PlaceAt(1), 0, 0}; // between 200 and 40, beside 10 and 90
    const auto pixel = Sampled(SampleLineScalar, *level, Resampling::Smooth, way, 1);
    EXPECT_NEAR(pixel[0], (-10 + 9 * 200 + 9 * 40 - 90) / 16.0, 0.7);
    EXPECT_EQ(pixel[3], 255);
}

TEST(SampleLine, QuarterwayIsCubicDownwardsToo) {
    const auto column = *PyramidLevel::Make(*MakePictureOf(1, 5, [](auto, auto y) {
        const std::uint8_t values[] = {10, 200, 40, 90, 0};
        return MakeColor(values[y], values[y], values[y]);
    }));
    const SampleWay way{PlaceAt(1), PlaceAt(2.25), 0, 0};
    const auto pixel = Sampled(SampleLineScalar, *column, Resampling::Smooth, way, 1);
    // The weights of the cubic at a quarter: -9/128, 111/128, 29/128, -3/128.
    EXPECT_NEAR(pixel[0], (-9 * 10 + 111 * 200 + 29 * 40 - 3 * 90) / 128.0, 0.7);
}

TEST(SampleLine, LinearAndNearestLookNoFarther) {
    const auto level = LevelOf({0, 100, 200, 0});
    const auto at = [&](Resampling resampling, double place) {
        return Sampled(SampleLineScalar, *level, resampling, {PlaceAt(place), PlaceAt(1), 0, 0}, 1)[0];
    };
    EXPECT_NEAR(at(Resampling::Linear, 2.25), 125, 0.7);
    EXPECT_NEAR(at(Resampling::Linear, 2.75), 175, 0.7);
    EXPECT_EQ(at(Resampling::Nearest, 2.49), 100);
    EXPECT_EQ(at(Resampling::Nearest, 2.5), 200);
}

TEST(SampleLine, EvenColorsStayAtEveryPlace) {
    for (const unsigned value : {0u, 1u, 2u, 127u, 128u, 254u, 255u}) {
        const auto grey = static_cast<std::uint8_t>(value);
        const auto level =
            *PyramidLevel::Make(*MakePictureOf(4, 4, [&](auto, auto) { return MakeColor(grey, grey, grey); }));
        for (unsigned phase = 0; phase < 128; ++phase) {
            const SampleWay way{PlaceAt(1 + phase / 128.0), PlaceAt(1), 0, StepOf(1 / 128.0)};
            const auto pixels = Sampled(SampleLineScalar, *level, Resampling::Smooth, way, 128);
            for (std::size_t i = 0; i < pixels.size(); ++i) {
                ASSERT_EQ(pixels[i], i % 4 == 3 ? 255 : grey) << phase;
            }
        }
    }
}

TEST(SampleLine, OvershootEndsAtBlackAndWhite) {
    const auto level = LevelOf({255, 255, 0, 0});
    const SampleWay way{PlaceAt(1), PlaceAt(1), StepOf(1 / 16.0), 0};
    const auto pixels = Sampled(SampleLineScalar, *level, Resampling::Smooth, way, 48);
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_GE(pixels[i * 4], 250) << i;
        EXPECT_LE(pixels[(i + 32) * 4], 5) << i;
    }
}

// A square of four pixels of one grey, others of another all around it.
std::shared_ptr<const PyramidLevel> SquareLevel(std::uint8_t inside, std::uint8_t outside) {
    return *PyramidLevel::Make(*MakePictureOf(4, 4, [&](auto x, auto y) {
        const bool isInside = (x == 1 || x == 2) && (y == 1 || y == 2);
        const std::uint8_t grey = isInside ? inside : outside;
        return MakeColor(grey, grey, grey);
    }));
}

TEST(SampleLine, StrongestContrastNeitherWrapsNorBends) {
    const SampleWay middle{PlaceAt(2.5), PlaceAt(2.5), 0, 0};
    const auto at = [&](std::uint8_t inside, std::uint8_t outside) {
        return Sampled(SampleLineScalar, *SquareLevel(inside, outside), Resampling::Smooth, middle, 1)[0];
    };
    EXPECT_EQ(at(255, 0), 255);
    EXPECT_EQ(at(0, 255), 0);
    // Nine eighths squared of the square, the rest of what lies around it.
    EXPECT_NEAR(at(200, 0), 253.1, 0.7);
    EXPECT_NEAR(at(0, 200), 0, 0.7);
    EXPECT_NEAR(at(190, 10), 10 + 180 * 81 / 64.0, 0.7);
}

TEST(SampleLine, WaysEndAtThePadding) {
    const auto level = NoisyLevel(5, 3);
    const std::uint32_t last = 0xFFFF;
    EXPECT_TRUE((SampleWay{0, 0}.LiesWithin(*level, 1)));
    EXPECT_TRUE((SampleWay{PlaceAt(5) + last, PlaceAt(3) + last}.LiesWithin(*level, 1)));
    EXPECT_FALSE((SampleWay{PlaceAt(1), 0, StepOf(-1) - 1, 0}.LiesWithin(*level, 2)));
    EXPECT_FALSE((SampleWay{0, PlaceAt(1), 0, StepOf(-1) - 1}.LiesWithin(*level, 2)));
    EXPECT_FALSE((SampleWay{PlaceAt(6), 0}.LiesWithin(*level, 1)));
    EXPECT_FALSE((SampleWay{PlaceAt(6), 0, StepOf(-1), 0}.LiesWithin(*level, 3)));
    EXPECT_FALSE((SampleWay{0, PlaceAt(4), 0, StepOf(-1)}.LiesWithin(*level, 3)));
    EXPECT_FALSE((SampleWay{0, PlaceAt(4)}.LiesWithin(*level, 1)));
    EXPECT_TRUE((SampleWay{0, 0, StepOf(1), 0}.LiesWithin(*level, 6)));
    EXPECT_FALSE((SampleWay{0, 0, StepOf(1), 0}.LiesWithin(*level, 7)));
    EXPECT_FALSE((SampleWay{PlaceAt(2), PlaceAt(2), 0, StepOf(-1)}.LiesWithin(*level, 4)));
}

#if defined(__SSE2__)
std::vector<Sampler> VectorForms() {
    std::vector<Sampler> forms{SampleLineSse2};
    if (__builtin_cpu_supports("avx2")) {
        forms.push_back(SampleLineAvx2);
    }
    return forms;
}

TEST(SampleLine, VectorsGiveTheSameBits) {
    const auto level = NoisyLevel(1300, 40);
    struct Case {
        double x, y, stepX, stepY;
    };
    const Case cases[] = {
        {0.013, 0.77, 0.31, 0.029}, {1299.5, 39.9, -0.77, -0.029}, {3.3, 20.4, 0.97, 0},   {1300.9, 11.1, -0.99, 0},
        {7.7, 7.7, 0, 0},           {100.2, 0.1, 0, 0.03},         {5.5, 12.6, 1.9999, 0}, {2, 3, 1, 0},
        {2.4, 5.5, 2.2, 0},         {600.6, 39.99, 0.002, -0.03},
    };
    for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
        for (const Case& at : cases) {
            const SampleWay way{PlaceAt(at.x), PlaceAt(at.y), StepOf(at.stepX), StepOf(at.stepY)};
            for (const std::size_t count : {1u, 2u, 3u, 5u, 8u, 31u, 253u, 254u, 507u, 508u, 509u, 590u}) {
                const auto expected = Sampled(SampleLineScalar, *level, resampling, way, count);
                for (const Sampler form : VectorForms()) {
                    EXPECT_EQ(Sampled(form, *level, resampling, way, count), expected)
                        << at.x << " " << at.y << " " << at.stepX << " " << at.stepY << " x " << count;
                }
            }
        }
    }
}

TEST(SampleLine, VectorsGiveTheSameBitsAtTheStrongestContrast) {
    for (const auto& level : {SquareLevel(255, 0), SquareLevel(0, 255)}) {
        for (unsigned phase = 0; phase < 256; ++phase) {
            const SampleWay ways[] = {{PlaceAt(1.5), PlaceAt(1.5 + phase / 128.0), StepOf(1 / 128.0), 0},
                                      {PlaceAt(1.5 + phase / 128.0), PlaceAt(1.5), 0, StepOf(1 / 128.0)}};
            for (const SampleWay& way : ways) {
                const auto expected = Sampled(SampleLineScalar, *level, Resampling::Smooth, way, 256);
                for (const Sampler form : VectorForms()) {
                    ASSERT_EQ(Sampled(form, *level, Resampling::Smooth, way, 256), expected) << phase;
                }
            }
        }
    }
}

TEST(SampleLine, VectorsReachTheCornersOfSmallPictures) {
    for (const std::uint32_t side : {1u, 2u, 3u}) {
        const auto level = NoisyLevel(side, side);
        const SampleWay way{0, PlaceAt(side), StepOf(0.25), 0};
        const SampleWay slant{PlaceAt(side), 0, StepOf(-0.2), StepOf(0.2)};
        const std::size_t count = 4 * side + 1;
        for (const Sampler form : VectorForms()) {
            EXPECT_EQ(Sampled(form, *level, Resampling::Smooth, way, count),
                      Sampled(SampleLineScalar, *level, Resampling::Smooth, way, count));
            EXPECT_EQ(Sampled(form, *level, Resampling::Smooth, slant, count),
                      Sampled(SampleLineScalar, *level, Resampling::Smooth, slant, count));
        }
    }
}
#endif

} // namespace
