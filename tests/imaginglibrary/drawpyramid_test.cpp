// Drawing prepared pictures through affine maps.
#include "imaginglibrary/operations/drawpyramid.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/operations/footprint.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace imaginglibrary;
using namespace tests;

Affine Turned(double degrees) { return Affine::Rotation(degrees * std::numbers::pi / 180); }

// What a prepared picture looks like over one colour, on a surface of this format.
std::vector<Color> PyramidOver(Color below, const PixelSource& picture, const Affine& map, std::uint32_t width,
                               std::uint32_t height, Resampling resampling = Resampling::Smooth,
                               PixelFormat format = PixelFormat::Rgb32) {
    const auto surface = *Bitmap::Create({.width = width, .height = height, .format = format});
    Canvas canvas{*surface};
    const std::uint8_t pixel[] = {BlueOf(below), GreenOf(below), RedOf(below), AlphaOf(below)};
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            BlendRow(canvas, x, y, pixel, 1);
        }
    }
    const auto pyramid = PicturePyramid::Make(picture, std::size_t{1} << 28);
    EXPECT_TRUE(pyramid.Ok());
    DrawPyramid(canvas, **pyramid, map, resampling);
    return ColorsOf(*surface);
}

TEST(DrawPyramid, WholeMovesKeepEveryPixelOfEveryKind) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                     PixelFormat::Rgb555, PixelFormat::Rgb24, PixelFormat::Rgb32}) {
        const auto picture = MakePicture(format, 21, 10);
        const auto expected = ColorsOverWhite(*picture);
        for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
            const auto drawn = PyramidOver(White, *picture, Affine::Translation(5, 7), 40, 30, resampling);
            for (std::uint32_t y = 0; y < 30; ++y) {
                for (std::uint32_t x = 0; x < 40; ++x) {
                    const bool isInside = x >= 5 && x < 26 && y >= 7 && y < 17;
                    EXPECT_EQ(drawn[y * 40 + x], isInside ? expected[(y - 7) * 21 + x - 5] : White) << x << "," << y;
                }
            }
        }
    }
}

TEST(DrawPyramid, TranslucentPicturesShowWhatLiesBelow) {
    const auto picture = MakePicture(PixelFormat::Argb32, 21, 10);
    const auto drawn = PyramidOver(White, *picture, Affine::Translation(1, 2), 30, 14);
    const auto expected = ColorsOverWhite(*picture);
    for (std::uint32_t y = 0; y < 10; ++y) {
        for (std::uint32_t x = 0; x < 21; ++x) {
            EXPECT_LE(GreatestDifference({drawn[(y + 2) * 30 + x + 1]}, {expected[y * 21 + x]}), 1) << x << "," << y;
        }
    }
}

TEST(DrawPyramid, MirrorsAndQuarterTurnsShiftNothing) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 20, 10);
    const auto colors = ColorsOf(*picture);
    const auto mirrored = PyramidOver(White, *picture, {-1, 0, 0, 1, 20, 0}, 20, 10);
    const auto upsideDown = PyramidOver(White, *picture, {1, 0, 0, -1, 0, 10}, 20, 10);
    const auto turned = PyramidOver(White, *picture, {0, 1, -1, 0, 10, 0}, 10, 20);
    for (std::uint32_t y = 0; y < 10; ++y) {
        for (std::uint32_t x = 0; x < 20; ++x) {
            const Color expected = colors[y * 20 + x];
            EXPECT_EQ(mirrored[y * 20 + 19 - x], expected);
            EXPECT_EQ(upsideDown[(9 - y) * 20 + x], expected);
            EXPECT_EQ(turned[x * 10 + 9 - y], expected);
        }
    }
}

TEST(DrawPyramid, EveryFormatThatCanBeDrawnOnGetsTheSamePicture) {
    const auto picture = MakePictureOf(12, 9, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x * 20), static_cast<std::uint8_t>(y * 20), 90,
                         static_cast<std::uint8_t>(x < 6 ? 255 : 128));
    });
    const Affine map = Turned(20).Then(Affine::Translation(6, 3));
    const auto expected = PyramidOver(White, *picture, map, 24, 24);
    for (const PixelFormat format :
         {PixelFormat::Rgb24, PixelFormat::Argb32, PixelFormat::Pargb32, PixelFormat::Rgb48}) {
        const auto drawn = PyramidOver(White, *picture, map, 24, 24, Resampling::Smooth, format);
        EXPECT_LE(GreatestDifference(drawn, expected), 1);
    }
    const auto coarse = PyramidOver(White, *picture, map, 24, 24, Resampling::Smooth, PixelFormat::Rgb565);
    EXPECT_LE(GreatestDifference(coarse, expected), 9);
}

TEST(DrawPyramid, EnlargedWhiteIsWhiteToItsBordersOnWholePixels) {
    for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
        const auto drawn = PyramidOver(Black, *WhitePicture(2, 2),
                                       Affine::Scaling(8, 8).Then(Affine::Translation(2, 2)), 20, 20, resampling);
        for (std::uint32_t y = 0; y < 20; ++y) {
            for (std::uint32_t x = 0; x < 20; ++x) {
                const bool isInside = x >= 2 && x < 18 && y >= 2 && y < 18;
                EXPECT_EQ(drawn[y * 20 + x], isInside ? White : Black) << x << "," << y;
            }
        }
    }
}

TEST(DrawPyramid, NearestEnlargesInEqualBlocks) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? Black : White; });
    const auto drawn = PyramidOver(Red, *picture, Affine::Scaling(4, 1), 8, 1, Resampling::Nearest);
    EXPECT_EQ(drawn, (std::vector<Color>{Black, Black, Black, Black, White, White, White, White}));
}

// A step of 60,000 pixels is longer than a step can be told.
TEST(DrawPyramid, NearestFindsItsPixelsHoweverFarApartTheyLie) {
    const auto picture = MakePictureOf(65535, 1, [](auto x, auto) { return x < 61000 ? Black : White; });
    const Affine map = Affine::Translation(28000, 0).Then(Affine::Scaling(1 / 60000.0, 1));
    EXPECT_EQ(PyramidOver(Red, *picture, map, 3, 1, Resampling::Nearest), (std::vector<Color>{Black, White, Red}));
    const Affine mirrored = map.Then({-1, 0, 0, 1, 2, 0});
    EXPECT_EQ(PyramidOver(Red, *picture, mirrored, 3, 1, Resampling::Nearest), (std::vector<Color>{White, Black, Red}));
    const auto upright = MakePictureOf(1, 65535, [](auto, auto y) { return y < 61000 ? Black : White; });
    const Affine lying = Affine::Translation(0, 28000).Then({0, 1, 1 / 60000.0, 0, 0, 0});
    EXPECT_EQ(PyramidOver(Red, *upright, lying, 3, 1, Resampling::Nearest), (std::vector<Color>{Black, White, Red}));
}

TEST(DrawPyramid, NearestHasNoSoftBorders) {
    const auto drawn = PyramidOver(Black, *WhitePicture(11, 7), Turned(30).Then(Affine::Translation(5, 1)), 20, 20,
                                   Resampling::Nearest);
    for (const Color color : drawn) {
        EXPECT_TRUE(color == White || color == Black);
    }
}

TEST(DrawPyramid, EnlargingRisesAsItsWayOfResamplingDoes) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? Black : White; });
    const int linear[] = {0, 0, 32, 96, 159, 223, 255, 255};
    // A cubic that overshoots is cut off at black and white.
    const double third = 255 * (0.125 * 0.125 * (1.5 + 1) - 0.0);
    const auto drawn = PyramidOver(Red, *picture, Affine::Scaling(4, 1), 8, 1, Resampling::Linear);
    const auto cubic = PyramidOver(Red, *picture, Affine::Scaling(4, 1), 8, 1, Resampling::Smooth);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_NEAR(RedOf(drawn[i]), linear[i], 1) << i;
    }
    EXPECT_LT(RedOf(cubic[2]), third + 20);
    EXPECT_NEAR(RedOf(cubic[3]) + RedOf(cubic[4]), 255, 2);
    EXPECT_LT(RedOf(cubic[3]), 90); // steeper than a straight line
}

TEST(DrawPyramid, SlantedBordersFadeByWhatTheyCover) {
    const auto drawn =
        PyramidOver(Black, *WhitePicture(20, 20),
                    Affine::Translation(-10, -10).Then(Turned(45)).Then(Affine::Translation(20, 20)), 40, 40);
    double area = 0;
    for (const Color color : drawn) {
        EXPECT_EQ(RedOf(color), BlueOf(color));
        area += RedOf(color) / 255.0;
    }
    EXPECT_NEAR(area, 400, 0.5);
    EXPECT_EQ(drawn[20 * 40 + 20], White);
    EXPECT_EQ(drawn[20 * 40 + 3], Black);
    const auto faded =
        std::count_if(drawn.begin(), drawn.end(), [](Color color) { return color != White && color != Black; });
    EXPECT_LT(faded, 130); // one or two to a row on each side
}

TEST(DrawPyramid, BordersBetweenPixelsFade) {
    const auto drawn = PyramidOver(Black, *WhitePicture(4, 4), Affine::Translation(1.25, 0), 8, 4);
    EXPECT_NEAR(RedOf(drawn[1]), 191, 1);
    EXPECT_EQ(drawn[2], White);
    EXPECT_NEAR(RedOf(drawn[5]), 64, 1);
    EXPECT_EQ(drawn[6], Black);
}

TEST(DrawPyramid, ShrinkingAverages) {
    const auto stripes = MakePictureOf(256, 256, [](auto x, auto) { return x % 4 == 0 ? White : Black; });
    for (const double scale : {0.4, 0.25, 0.1, 0.03}) {
        const Affine map = Affine::Scaling(scale, scale).Then(Turned(17)).Then(Affine::Translation(60, 4));
        const auto drawn = PyramidOver(White, *stripes, map, 140, 140);
        const Point middle = map({128, 128});
        const Color color = drawn[static_cast<std::size_t>(middle.y) * 140 + static_cast<std::size_t>(middle.x)];
        EXPECT_NEAR(RedOf(color), 64, scale < 0.3 ? 3 : 25) << scale;
    }
}

TEST(DrawPyramid, ShrunkEdgesStandWhereTheMapPutsThem) {
    const auto halves = MakePictureOf(200, 200, [](auto x, auto y) { return x < 160 && y < 120 ? White : Black; });
    for (const double scale : {0.85, 0.7, 0.55, 0.3}) {
        const auto drawn = PyramidOver(Red, *halves, Affine::Scaling(scale, scale), 200, 200);
        const auto at = [&](double x, double y) {
            return RedOf(drawn[static_cast<std::size_t>(y * scale) * 200 + static_cast<std::size_t>(x * scale)]);
        };
        EXPECT_GT(at(150, 20), 240) << scale;
        EXPECT_LT(at(170, 20), 15) << scale;
        EXPECT_GT(at(20, 110), 240) << scale;
        EXPECT_LT(at(20, 130), 15) << scale;
    }
}

TEST(DrawPyramid, SquashedPicturesStaySharpAcrossAndAverageAlong) {
    const auto stripes = MakePictureOf(64, 64, [](auto x, auto) { return x % 4 < 2 ? White : Black; });
    const auto lying = MakePictureOf(64, 64, [](auto, auto y) { return y % 2 == 0 ? White : Black; });
    for (const double scale : {0.5, 0.25}) {
        const auto height = static_cast<std::uint32_t>(64 * scale);
        const auto across = PyramidOver(Red, *stripes, Affine::Scaling(1, scale), 64, height);
        const auto along = PyramidOver(Red, *lying, Affine::Scaling(1, scale), 64, height);
        const auto turned = PyramidOver(Red, *stripes, Affine{0, 1, scale, 0, 0, 0}, height, 64);
        for (std::uint32_t x = 0; x < 64; ++x) {
            const Color expected = x % 4 < 2 ? White : Black;
            EXPECT_EQ(across[height / 2 * 64 + x], expected) << x << " at " << scale;
            EXPECT_EQ(turned[x * height + height / 2], expected) << x << " at " << scale;
            EXPECT_NEAR(RedOf(along[height / 2 * 64 + x]), 127, 6) << scale;
        }
    }
}

TEST(DrawPyramid, SquashedPicturesAreWholeAtTheirBorders) {
    const Affine map = Affine::Scaling(1, 0.2).Then(Turned(33)).Then(Affine::Translation(40, 4));
    double area = 0;
    for (const Color color : PyramidOver(Black, *WhitePicture(60, 60), map, 100, 60)) {
        area += RedOf(color) / 255.0;
    }
    EXPECT_NEAR(area, 60 * 12, 1.5);
}

TEST(Footprint, StripLiesWhereTheMapShrinksMost) {
    const Footprint even(Affine::Scaling(0.5, 0.5).Then(Turned(20)));
    EXPECT_EQ(even.samples, 1u);
    EXPECT_NEAR(even.scale, 0.5, 1e-9);
    const Footprint low(Affine::Scaling(1, 0.5));
    EXPECT_EQ(low.samples, 2u);
    EXPECT_NEAR(low.scale, 1, 1e-9);
    EXPECT_NEAR(std::abs(low.Offset(0).y), 0.25, 1e-9);
    EXPECT_NEAR(low.Offset(0).x, 0, 1e-9);
    EXPECT_NEAR(low.Offset(0).y + low.Offset(1).y, 0, 1e-9);
    const Footprint turned(Affine::Scaling(0.1, 1).Then(Turned(30)));
    EXPECT_EQ(turned.samples, 4u);
    EXPECT_NEAR(turned.scale, 0.4, 1e-9);
    // The squashed direction, across the picture, is turned with it.
    const Point first = turned.Offset(0);
    EXPECT_NEAR(std::hypot(first.x, first.y), 0.375, 1e-9);
    EXPECT_NEAR(std::abs(first.y / first.x), std::tan(std::numbers::pi / 6), 1e-9);
    EXPECT_GT(first.y * first.x, 0);
    EXPECT_EQ(Footprint(Affine::Scaling(1, 0.8)).samples, 1u);
    EXPECT_EQ(Footprint(Affine::Scaling(4, 1)).samples, 1u);
    EXPECT_EQ(Footprint(Affine::Scaling(4, 0.5)).samples, 2u);
    EXPECT_NEAR(Footprint(Affine::Scaling(4, 0.5)).scale, 1, 1e-9);
    EXPECT_NEAR(Footprint(Affine::Scaling(4, 3)).scale, 3, 1e-9);
    EXPECT_EQ(Footprint(Affine{0, 0, 0, 0, 0, 0}).scale, 0);
}

TEST(DrawPyramid, FlattenedPicturesDrawNothing) {
    const Affine flat[] = {{0, 0, 0, 0, 5, 5}, {1, 1, 1, 1, 0, 0}, {0, 0, 0, 5, 2, 0}, {5, 0, 0, 0, 0, 2}};
    for (const Affine& map : flat) {
        EXPECT_EQ(PyramidOver(White, *MakePicture(PixelFormat::Rgb24, 8, 8), map, 10, 10),
                  std::vector<Color>(100, White));
    }
}

TEST(DrawPyramid, WhatLiesOffTheSurfaceDrawsNothing) {
    for (const Affine& map :
         {Affine::Translation(1e9, 0), Affine::Translation(0, -1e9), Affine::Translation(-8, 0),
          Affine::Translation(0, 10), Affine::Scaling(1e8, 1e8).Then(Affine::Translation(11, 11))}) {
        EXPECT_EQ(PyramidOver(White, *MakePicture(PixelFormat::Rgb24, 8, 8), map, 10, 10),
                  std::vector<Color>(100, White));
    }
}

TEST(DrawPyramid, SmallWindowOnAHugeEnlargementIsInPlace) {
    const auto picture = MakePictureOf(4, 4, [](auto x, auto) { return x < 2 ? Black : White; });
    for (const double degrees : {0.0, 1.0}) {
        const Affine map = Affine::Translation(-3, -3).Then(Affine::Scaling(2e8, 2e8)).Then(Turned(degrees));
        for (const Color color : PyramidOver(Red, *picture, map, 8, 8)) {
            EXPECT_EQ(color, White);
        }
    }
}

TEST(DrawPyramid, SinglePixelBecomesAnEvenSquare) {
    const auto drawn = PyramidOver(White, *MakePictureOf(1, 1, [](auto, auto) { return Blue; }),
                                   Affine::Scaling(5, 5).Then(Affine::Translation(1, 1)), 7, 7);
    for (std::uint32_t y = 0; y < 7; ++y) {
        for (std::uint32_t x = 0; x < 7; ++x) {
            const bool isInside = x >= 1 && x < 6 && y >= 1 && y < 6;
            EXPECT_EQ(drawn[y * 7 + x], isInside ? Blue : White) << x << "," << y;
        }
    }
}

TEST(DrawPyramid, LargeDrawingIsMadeOfTheSameRowsAsSmallOnes) {
    // The large one is shared out over threads and blocks; its rows alone are not.
    const auto picture = MakePicture(PixelFormat::Rgb24, 300, 200);
    const auto pyramid = *PicturePyramid::Make(*picture, std::size_t{1} << 28);
    for (const double degrees : {0.0, 24.0}) {
        const Affine map = Affine::Scaling(2.1, 2.1).Then(Turned(degrees)).Then(Affine::Translation(90, -60));
        const auto whole = *Bitmap::Create({.width = 611, .height = 403, .format = PixelFormat::Rgb32});
        const auto row = *Bitmap::Create({.width = 611, .height = 1, .format = PixelFormat::Rgb32});
        Canvas canvas{*whole};
        DrawPyramid(canvas, *pyramid, map, Resampling::Smooth);
        for (std::uint32_t y = 0; y < 403; ++y) {
            std::fill_n(row->Row(0), row->RowBytes(), std::uint8_t{0});
            Canvas line{*row, 0, y};
            DrawPyramid(line, *pyramid, map, Resampling::Smooth);
            ASSERT_TRUE(std::equal(row->Row(0), row->Row(0) + row->RowBytes(), whole->Row(y))) << y;
        }
    }
}

TEST(DrawPyramid, ClearPixelsLendNoColor) {
    const auto picture = MakePictureOf(32, 32, [](auto x, auto y) {
        return (x / 4 + y / 4) % 2 == 0 ? MakeColor(255, 0, 0) : MakeColor(0, 255, 0, 0);
    });
    for (const Affine& map : {Affine::Scaling(3, 3), Affine::Scaling(0.4, 0.4), Turned(12)}) {
        for (const Color color : PyramidOver(Black, *picture, map, 40, 40)) {
            EXPECT_EQ(GreenOf(color), 0);
        }
    }
}

} // namespace
