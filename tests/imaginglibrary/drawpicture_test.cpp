// Drawing pictures through affine maps.
#include "imaginglibrary/operations/drawpicture.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/operations/affinesampler.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <array>
#include <numbers>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::shared_ptr<Bitmap> NewBitmap(std::uint32_t width, std::uint32_t height, PixelFormat format = PixelFormat::Argb32) {
    return *Bitmap::Create({.width = width, .height = height, .format = format});
}

PixelRect WholeOf(const PixelSource& picture) { return {0, 0, picture.Info().width, picture.Info().height}; }

// What a picture looks like on a clear bitmap behind a map.
std::vector<Color> Drawn(std::shared_ptr<const PixelSource> picture, const Affine& map, std::uint32_t width,
                         std::uint32_t height, Resampling resampling = Resampling::Smooth) {
    auto bitmap = NewBitmap(width, height);
    Canvas canvas{*bitmap};
    const PixelRect part = WholeOf(*picture);
    EXPECT_EQ(DrawPicture(canvas, {std::move(picture), part, map, resampling}), Status::Ok);
    return ColorsOf(*bitmap);
}

TEST(DrawPicture, WholeMovesKeepEveryPixel) {
    for (const PixelFormat format : {PixelFormat::Indexed4, PixelFormat::Rgb24, PixelFormat::Argb32}) {
        const auto picture = MakePicture(format, 20, 10);
        const auto drawn = Drawn(picture, Affine::Translation(5, 7), 40, 30);
        const auto colors = ColorsOf(*picture);
        for (std::uint32_t y = 0; y < 10; ++y) {
            for (std::uint32_t x = 0; x < 20; ++x) {
                const Color expected = colors[y * 20 + x];
                const Color seen = drawn[(y + 7) * 40 + x + 5];
                EXPECT_TRUE(seen == expected || AlphaOf(expected) == 0) << x << "," << y;
            }
        }
        EXPECT_EQ(drawn[6 * 40 + 5], 0u);
        EXPECT_EQ(drawn[7 * 40 + 4], 0u);
        EXPECT_EQ(drawn[17 * 40 + 5], 0u);
    }
}

TEST(DrawPicture, WhatFallsOutsideIsCutOff) {
    const auto picture = MakePictureOf(4, 4, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x * 10), static_cast<std::uint8_t>(y * 10), 0);
    });
    const auto topLeft = Drawn(picture, Affine::Translation(-2, -3), 3, 3);
    EXPECT_EQ(topLeft[0], MakeColor(20, 30, 0));
    EXPECT_EQ(topLeft[1], MakeColor(30, 30, 0));
    EXPECT_EQ(topLeft[2], 0u);
    EXPECT_EQ(topLeft[3], 0u);
    for (const Color color : Drawn(picture, Affine::Translation(100, 100), 3, 3)) {
        EXPECT_EQ(color, 0u);
    }
}

TEST(DrawPicture, EnlargedWhiteStaysWhiteToItsBorders) {
    for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
        const auto drawn =
            Drawn(WhitePicture(2, 2), Affine::Scaling(8, 8).Then(Affine::Translation(2, 2)), 20, 20, resampling);
        for (std::uint32_t y = 0; y < 20; ++y) {
            for (std::uint32_t x = 0; x < 20; ++x) {
                const bool isInside = x >= 2 && x < 18 && y >= 2 && y < 18;
                EXPECT_EQ(drawn[y * 20 + x], isInside ? White : 0u) << x << "," << y;
            }
        }
    }
}

TEST(DrawPicture, NearestEnlargesInEqualBlocks) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? Black : White; });
    const auto drawn = Drawn(picture, Affine::Scaling(4, 1), 8, 1, Resampling::Nearest);
    EXPECT_EQ(drawn, (std::vector<Color>{Black, Black, Black, Black, White, White, White, White}));
}

TEST(DrawPicture, LinearEnlargingRisesEvenly) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? Black : White; });
    const auto drawn = Drawn(picture, Affine::Scaling(4, 1), 8, 1, Resampling::Linear);
    const int expected[] = {0, 0, 32, 96, 159, 223, 255, 255};
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_NEAR(RedOf(drawn[i]), expected[i], 1) << i;
    }
}

TEST(DrawPicture, HalfAPixelBesideItsPlaceEachPixelIsHalfOfTwo) {
    const auto across = MakePictureOf(3, 1, [](auto x, auto) { return x == 1 ? White : Black; });
    const auto drawnAcross = Drawn(across, Affine::Translation(0.5, 0), 4, 1, Resampling::Linear);
    const auto down = MakePictureOf(1, 3, [](auto, auto y) { return y == 1 ? White : Black; });
    const auto drawnDown = Drawn(down, Affine::Translation(0, 0.5), 1, 4, Resampling::Linear);
    for (const auto& drawn : {drawnAcross, drawnDown}) {
        EXPECT_NEAR(AlphaOf(drawn[0]), 127, 2);
        EXPECT_NEAR(RedOf(drawn[1]), 127, 2);
        EXPECT_NEAR(RedOf(drawn[2]), 127, 2);
        EXPECT_NEAR(AlphaOf(drawn[3]), 127, 2);
    }
}

TEST(DrawPicture, NegativeScalesMirror) {
    const auto picture = MakePictureOf(
        3, 2, [](auto x, auto y) { return MakeColor(static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 0); });
    const auto mirrored = Drawn(picture, Affine::Scaling(-1, 1).Then(Affine::Translation(3, 0)), 3, 2);
    EXPECT_EQ(mirrored[0], MakeColor(2, 0, 0));
    const auto upsideDown = Drawn(picture, Affine::Scaling(1, -1).Then(Affine::Translation(0, 2)), 3, 2);
    EXPECT_EQ(upsideDown[0], MakeColor(0, 1, 0));
    const auto both = Drawn(picture, Affine::Scaling(-1, -1).Then(Affine::Translation(3, 2)), 3, 2);
    EXPECT_EQ(both[0], MakeColor(2, 1, 0));
}

TEST(DrawPicture, QuarterTurnShiftsNothing) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 20, 10);
    const auto colors = ColorsOf(*picture);
    const auto drawn = Drawn(picture, Affine::Rotation(std::numbers::pi / 2).Then(Affine::Translation(10, 0)), 10, 20);
    for (std::uint32_t y = 0; y < 10; ++y) {
        for (std::uint32_t x = 0; x < 20; ++x) {
            EXPECT_EQ(drawn[x * 10 + 9 - y], colors[y * 20 + x]) << x << "," << y;
        }
    }
}

// Three greys in a row, one above the other by a level.
Result<AffineSampler> SamplerOfGreys(const Affine& toSurface, Resampling resampling) {
    return AffineSampler::Create(MakePictureOf(3, 1,
                                               [](auto x, auto) {
                                                   const auto grey = static_cast<std::uint8_t>(10 + x);
                                                   return MakeColor(grey, grey, grey);
                                               }),
                                 toSurface, resampling);
}

TEST(AffineSampler, ChannelsAndBordersAreRounded) {
    const auto sampler = SamplerOfGreys(Affine::Translation(0.5, 0), Resampling::Linear);
    ASSERT_TRUE(sampler.Ok());
    const auto grey = [&](std::int64_t x, std::int64_t y = 0) {
        std::array<std::uint8_t, 4> pixel{7, 7, 7, 7};
        sampler->SampleAt(x, y, pixel.data());
        return std::pair<int, int>(pixel[1], pixel[3]);
    };
    EXPECT_EQ(grey(0), std::pair(10, 128)) << "half of the pixel is covered";
    EXPECT_EQ(grey(1), std::pair(11, 255)) << "10 and a half";
    EXPECT_EQ(grey(2), std::pair(12, 255));
    EXPECT_EQ(grey(3), std::pair(12, 128));
    EXPECT_EQ(grey(4), std::pair(0, 0));
    EXPECT_EQ(grey(-1), std::pair(0, 0));
    EXPECT_EQ(grey(1, 1), std::pair(0, 0));
}

TEST(AffineSampler, NearestEndsAtTheBorderItself) {
    const auto sampler = SamplerOfGreys(Affine::Translation(0.5, 0.5), Resampling::Nearest);
    ASSERT_TRUE(sampler.Ok());
    const auto alpha = [&](std::int64_t x, std::int64_t y) {
        std::array<std::uint8_t, 4> pixel{};
        sampler->SampleAt(x, y, pixel.data());
        return int{pixel[3]};
    };
    EXPECT_EQ(alpha(0, 0), 255);
    EXPECT_EQ(alpha(2, 0), 255);
    EXPECT_EQ(alpha(3, 0), 0);
    EXPECT_EQ(alpha(0, 1), 0);
    EXPECT_EQ(alpha(-1, 0), 0);
    EXPECT_EQ(alpha(0, -1), 0);
}

TEST(DrawPicture, SlantedBordersFadeOverOnePixel) {
    const auto drawn = Drawn(
        WhitePicture(20, 20),
        Affine::Translation(-10, -10).Then(Affine::Rotation(std::numbers::pi / 4)).Then(Affine::Translation(20, 20)),
        40, 40);
    double area = 0;
    for (const Color color : drawn) {
        EXPECT_TRUE(color == 0 || (color & 0xFFFFFF) == 0xFFFFFF); // faded, never darkened
        area += AlphaOf(color) / 255.0;
    }
    EXPECT_NEAR(area, 400, 4);
    EXPECT_EQ(drawn[20 * 40 + 20], White);
    EXPECT_EQ(drawn[20 * 40 + 3], 0u);
}

TEST(DrawPicture, ShrinkingAveragesInEveryDirection) {
    const auto stripes = MakePictureOf(256, 256, [](auto x, auto) { return x % 4 == 0 ? White : Black; });
    const Affine shrink = Affine::Scaling(0.1, 0.1);
    const Affine slanted = shrink.Then(Affine::Rotation(0.3)).Then(Affine::Translation(10, 4));
    const auto drawn = Drawn(stripes, slanted, 40, 40);
    const Color middle = drawn[18 * 40 + 18];
    EXPECT_EQ(AlphaOf(middle), 255);
    EXPECT_NEAR(RedOf(middle), 64, 12);
}

TEST(DrawPicture, SmallWindowOnAHugeEnlargementNeedsLittle) {
    const auto picture = MakePictureOf(4, 4, [](auto x, auto) { return x < 2 ? Black : White; });
    // A million pixels a side would never fit into memory.
    const auto drawn =
        Drawn(picture, Affine::Scaling(250000, 250000).Then(Affine::Translation(-900000, -900000)), 8, 8);
    for (const Color color : drawn) {
        EXPECT_EQ(color, White);
    }
}

TEST(DrawPicture, PartBeyondThePictureDrawsNothingAndKeepsThePlace) {
    auto bitmap = NewBitmap(60, 60);
    Canvas canvas{*bitmap};
    // A rectangle of 40 by 40 around a picture of 20 by 10, drawn at 10, 10.
    const Affine map = Affine::Translation(15, 15);
    EXPECT_EQ(DrawPicture(canvas, {WhitePicture(20, 10), {-5, -5, 35, 35}, map}), Status::Ok);
    const auto colors = ColorsOf(*bitmap);
    for (std::uint32_t y = 0; y < 60; ++y) {
        for (std::uint32_t x = 0; x < 60; ++x) {
            const bool isInside = x >= 15 && x < 35 && y >= 15 && y < 25;
            EXPECT_EQ(colors[y * 60 + x], isInside ? White : 0u) << x << "," << y;
        }
    }
}

TEST(DrawPicture, FlattenedPictureIsNoFailure) {
    for (const Affine& map : {Affine::Scaling(0, 5), Affine::Scaling(5, 0), Affine{1, 1, 1, 1, 0, 0}}) {
        for (const Color color : Drawn(WhitePicture(4, 4), map, 10, 10)) {
            EXPECT_LT(AlphaOf(color), 255);
        }
    }
}

TEST(DrawPicture, ClearPixelsLendNoColorWhileFiltering) {
    const auto picture = MakePictureOf(32, 32, [](auto x, auto y) {
        return (x / 4 + y / 4) % 2 == 0 ? MakeColor(255, 0, 0) : MakeColor(0, 255, 0, 0);
    });
    for (const Affine& map : {Affine::Scaling(3, 3), Affine::Scaling(0.4, 0.4), Affine::Rotation(0.2)}) {
        for (const Color color : Drawn(picture, map, 40, 40)) {
            EXPECT_EQ(GreenOf(color), 0);
        }
    }
}

} // namespace
