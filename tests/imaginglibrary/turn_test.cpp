// Turns, mirrors and parts of pictures in every pixel format.
#include "imaginglibrary/operations/turn.h"

#include "imaginglibrary/operations/crop.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr PixelFormat TurnedFormats[] = {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                         PixelFormat::Rgb555,   PixelFormat::Rgb24,    PixelFormat::Argb32,
                                         PixelFormat::Rgb48};

// Applies the meaning of a code one quarter turn after the other, then the mirror.
std::vector<Color> TurnedByHand(std::vector<Color> colors, std::uint32_t width, std::uint32_t height, unsigned code) {
    for (unsigned i = 0; i < (code & 3); ++i) {
        std::vector<Color> turned(colors.size());
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                turned[x * height + (height - 1 - y)] = colors[y * width + x];
            }
        }
        colors = std::move(turned);
        std::swap(width, height);
    }
    for (std::uint32_t y = 0; (code & 4) != 0 && y < height; ++y) {
        std::reverse(colors.begin() + y * width, colors.begin() + (y + 1) * width);
    }
    return colors;
}

TEST(Turn, EveryCodeMovesEveryPixelInEveryFormat) {
    for (const PixelFormat format : TurnedFormats) {
        for (unsigned code = 0; code < TurnCodes; ++code) {
            const auto picture = MakePicture(format, 37, 70);
            const auto turned = Turned(*picture, code);
            ASSERT_TRUE(turned.Ok());
            EXPECT_EQ((*turned)->Info().width, code % 2 == 0 ? 37u : 70u);
            EXPECT_EQ((*turned)->Info().format, format);
            EXPECT_EQ(ColorsOf(**turned), TurnedByHand(ColorsOf(*picture), 37, 70, code))
                << "code " << code << ", format " << static_cast<unsigned>(format);
        }
    }
}

TEST(Turn, ResolutionsTurnAlong) {
    auto bitmap = Bitmap::Create({.width = 2, .height = 3, .format = PixelFormat::Rgb24, .resolution = {300, 150}});
    EXPECT_EQ((*Turned(**bitmap, 1))->Info().resolution.horizontal, 150);
    EXPECT_EQ((*Turned(**bitmap, 2))->Info().resolution.horizontal, 300);
}

TEST(Crop, PartsHoldTheirPixelsInEveryFormat) {
    for (const PixelFormat format : TurnedFormats) {
        const auto picture = MakePicture(format, 21, 13);
        const auto all = ColorsOf(*picture);
        for (std::int64_t left = 0; left < 10; ++left) {
            const auto part = CroppedTo(picture, {left, 3, left + 9, 11});
            std::vector<Color> expected;
            for (std::int64_t y = 3; y < 11; ++y) {
                expected.insert(expected.end(), all.begin() + y * 21 + left, all.begin() + y * 21 + left + 9);
            }
            EXPECT_EQ(ColorsOf(*part), expected) << "from " << left << ", format " << static_cast<unsigned>(format);
        }
    }
}

TEST(Crop, ReadersAreIndependent) {
    ExpectIndependentReaders(*CroppedTo(MakePicture(PixelFormat::Rgb24, 20, 20), {3, 4, 17, 18}));
}

} // namespace
