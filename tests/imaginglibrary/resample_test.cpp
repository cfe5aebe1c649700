// Pictures made smaller and larger.
#include "imaginglibrary/operations/resample.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

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

// A result of 32 KiB must not take a gigabyte on the way.
TEST(Resample, TakesNoMoreThanAPictureMayTake) {
    const auto tall = MakePictureOf(50, 40000, [](auto, auto) { return MakeColor(1, 2, 3); });
    EXPECT_EQ(Resample(*tall, 60000, 1).GetStatus(), Status::OutOfMemory);
}

} // namespace
