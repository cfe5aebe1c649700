// Pictures made smaller and larger.
#include "imaginglibrary/operations/resample.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace imaginglibrary;
using namespace tests;

TEST(Resample, SameSizeIsTheSamePicture) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 37, 23);
    EXPECT_EQ(ColorsOf(**Resample(*picture, 37, 23)), ColorsOf(*picture));
}

TEST(Resample, OneColorStaysThatColorToTheBorders) {
    const auto white = MakePictureOf(100, 70, [](auto, auto) { return MakeColor(255, 255, 255); });
    for (const auto& [width, height] :
         {std::pair(4u, 4u), std::pair(1u, 1u), std::pair(301u, 99u), std::pair(7u, 200u)}) {
        const auto colors = ColorsOf(**Resample(*white, width, height));
        EXPECT_EQ(colors, std::vector<Color>(std::size_t{width} * height, MakeColor(255, 255, 255)));
    }
}

TEST(Resample, ShrinkingAveragesWhatItCovers) {
    // Every fourth column is white: a quarter of the light must arrive.
    const auto stripes =
        MakePictureOf(256, 16, [](auto x, auto) { return x % 4 == 0 ? MakeColor(255, 255, 255) : MakeColor(0, 0, 0); });
    for (const Color color : ColorsOf(**Resample(*stripes, 32, 2))) {
        EXPECT_NEAR(RedOf(color), 64, 12);
    }
}

TEST(Resample, EnlargingIsSmooth) {
    const auto step =
        MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? MakeColor(0, 0, 0) : MakeColor(255, 255, 255); });
    const auto colors = ColorsOf(**Resample(*step, 8, 1));
    EXPECT_EQ(RedOf(colors.front()), 0);
    EXPECT_EQ(RedOf(colors.back()), 255);
    for (std::size_t i = 1; i < colors.size(); ++i) {
        EXPECT_GE(RedOf(colors[i]), RedOf(colors[i - 1]));
        EXPECT_LT(RedOf(colors[i]) - RedOf(colors[i - 1]), 90);
    }
}

TEST(Resample, ClearPixelsLendNoColor) {
    // Red stands beside holes that are stored as green: no green may bleed in.
    const auto picture = MakePictureOf(64, 64, [](auto x, auto y) {
        return (x / 4 + y / 4) % 2 == 0 ? MakeColor(255, 0, 0) : MakeColor(0, 255, 0, 0);
    });
    for (const Color color : ColorsOf(**Resample(*picture, 10, 10))) {
        EXPECT_EQ(GreenOf(color), 0);
        EXPECT_NEAR(AlphaOf(color), 128, 40);
    }
}

TEST(Resample, StaysCloseToAnAreaAverage) {
    const auto picture = MakePictureOf(300, 200, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x * 255 / 299), static_cast<std::uint8_t>(y * 255 / 199), 90);
    });
    const auto expected = MakePictureOf(30, 20, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>((x * 10 + 4.5) * 255 / 299),
                         static_cast<std::uint8_t>((y * 10 + 4.5) * 255 / 199), 90);
    });
    EXPECT_GT(PeakSignalToNoise(ColorsOf(**Resample(*picture, 30, 20)), ColorsOf(*expected)), 45);
}

TEST(Resample, ReadingAtASmallerScaleIsExactWhereBlocksStickOut) {
    // Each of these sides leaves a part of a block at both borders, and every scale that a file can be read at is used.
    const auto waves = [](unsigned x, unsigned y, int channel) {
        return static_cast<std::uint8_t>(128 + 60 * std::sin(x * 0.05 + channel) + 60 * std::cos(y * 0.06));
    };
    for (const unsigned side : {161u, 164u, 167u}) {
        const auto picture = Opened(JpegCodec(), MakeJpeg({.width = side, .height = side + 2}, waves));
        const auto whole = Bitmap::Copy(*picture);
        for (const std::uint32_t height : {80u, 50u, 30u, 20u, 12u}) {
            EXPECT_GT(PeakSignalToNoise(ColorsOf(**Resample(*picture, height, height)),
                                        ColorsOf(**Resample(**whole, height, height))),
                      38)
                << side << " to " << height;
        }
    }
}

TEST(Resample, WhatABlockHoldsBeyondThePictureIsNotSeen) {
    const auto blackBeyond = [](unsigned x, unsigned y, int) {
        return static_cast<std::uint8_t>(x < 161 && y < 89 ? 255 : 0);
    };
    const auto picture =
        Opened(JpegCodec(), WithClaimedSize(MakeJpeg({.width = 168, .height = 96}, blackBeyond), 161, 89));
    for (const Color color : ColorsOf(**Resample(*picture, 18, 10))) {
        EXPECT_EQ(color, White);
    }
}

TEST(Resample, NearestReadsThePixelsThemselves) {
    const auto noise = [](unsigned x, unsigned y, int) { return static_cast<std::uint8_t>(x * 37 ^ y * 91); };
    const auto picture = Opened(JpegCodec(), MakeJpeg({.width = 64, .height = 64}, noise));
    const std::vector<Color> all = ColorsOf(*picture);
    const auto few = ColorsOf(**Resample(*picture, 2, 2, Resampling::Nearest));
    EXPECT_EQ(few, (std::vector{all[16 * 64 + 16], all[16 * 64 + 48], all[48 * 64 + 16], all[48 * 64 + 48]}));
}

TEST(Resample, RowsComeInOrderAndWhatStopsOneStopsAll) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 40, 31);
    std::vector<std::uint32_t> seen;
    const auto stopAtFour = [&](std::uint32_t y, const std::uint8_t*) {
        seen.push_back(y);
        return y == 4 ? Status::Aborted : Status::Ok;
    };
    EXPECT_EQ(ResampleRows(*picture, 10, 9, Resampling::Smooth, stopAtFour), Status::Aborted);
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{0, 1, 2, 3, 4}));
}

// A result of 32 KiB must not take a gigabyte on the way.
TEST(Resample, TakesNoMoreThanAPictureMayTake) {
    const auto tall = MakePictureOf(50, 40000, [](auto, auto) { return MakeColor(1, 2, 3); });
    EXPECT_EQ(Resample(*tall, 60000, 1).GetStatus(), Status::OutOfMemory);
}

} // namespace
