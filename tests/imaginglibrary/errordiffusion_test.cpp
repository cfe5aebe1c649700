// Error diffusion, held against a plain form of its rules.
#include "imaginglibrary/core/pixelformat.h"
#include "imaginglibrary/operations/errordiffusion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using namespace imaginglibrary;

constexpr std::uint8_t HoleIndex = 77;

using Pixels = std::vector<std::uint8_t>; // Argb32

int SoftenedPlainly(double sixteenths) {
    const double levels = std::round(sixteenths / 16);
    const double size = std::abs(levels);
    const double softened = size <= 16 ? size : 16 + std::floor((std::min(size, 48.0) - 16) / 2);
    return static_cast<int>(levels < 0 ? -softened : softened);
}

std::size_t NearestOfAll(const Palette& palette, const std::array<int, 3>& color) {
    const auto distance = [&](Color entry) {
        return std::pow(BlueOf(entry) - color[0], 2) + std::pow(GreenOf(entry) - color[1], 2) +
               std::pow(RedOf(entry) - color[2], 2);
    };
    const auto nearest =
        std::min_element(palette.begin(), palette.end(), [&](Color a, Color b) { return distance(a) < distance(b); });
    return static_cast<std::size_t>(nearest - palette.begin());
}

// With the errors of the whole picture in memory.
std::vector<std::uint8_t> DiffusedPlainly(const Pixels& pixels, int width, const Palette& palette) {
    const int height = static_cast<int>(pixels.size()) / 4 / width;
    std::vector<std::uint8_t> indices(pixels.size() / 4);
    std::vector<std::array<double, 3>> errors(indices.size());
    for (int y = 0; y < height; ++y) {
        const int forward = y % 4 < 2 ? 1 : -1;
        for (int count = 0; count < width; ++count) {
            const int x = forward > 0 ? count : width - 1 - count;
            const auto at = static_cast<std::size_t>(y * width + x);
            if (pixels[4 * at + 3] == 0) {
                indices[at] = HoleIndex;
                continue;
            }
            std::array<int, 3> wanted;
            for (std::size_t channel = 0; channel < 3; ++channel) {
                wanted[channel] = std::clamp(pixels[4 * at + channel] + SoftenedPlainly(errors[at][channel]), 0, 255);
            }
            indices[at] = static_cast<std::uint8_t>(NearestOfAll(palette, wanted));
            const Color color = palette[indices[at]];
            const std::array<int, 3> got{BlueOf(color), GreenOf(color), RedOf(color)};
            const auto give = [&](int toX, int toY, int weight) {
                if (toX >= 0 && toX < width && toY < height) {
                    for (std::size_t channel = 0; channel < 3; ++channel) {
                        errors[static_cast<std::size_t>(toY * width + toX)][channel] +=
                            weight * (wanted[channel] - got[channel]);
                    }
                }
            };
            give(x + forward, y, 7);
            give(x - forward, y + 1, 3);
            give(x, y + 1, 5);
            give(x + forward, y + 1, 1);
        }
    }
    return indices;
}

std::vector<std::uint8_t> Diffused(const Pixels& pixels, int width, const Palette& palette) {
    ErrorDiffusion diffusion(palette, static_cast<std::uint32_t>(width));
    std::vector<std::uint8_t> indices(pixels.size() / 4);
    for (std::size_t at = 0; at < indices.size(); at += 2 * static_cast<std::size_t>(width)) {
        diffusion.MapTwoRows(&pixels[4 * at], &indices[at], HoleIndex);
    }
    return indices;
}

// Soft, so that errors pile up, and with `holes` of 256 pixels left out.
Pixels MakeSoftPixels(int width, int height, unsigned holes) {
    std::mt19937 random(static_cast<unsigned>(width * 1000 + height));
    Pixels pixels(static_cast<std::size_t>(width * height) * 4);
    for (std::size_t at = 0; at < pixels.size(); at += 4) {
        const double place = static_cast<double>(at) / static_cast<double>(pixels.size());
        pixels[at] = static_cast<std::uint8_t>(255 * place);
        pixels[at + 1] = static_cast<std::uint8_t>(127 + 120 * std::sin(place * 20));
        pixels[at + 2] = static_cast<std::uint8_t>(250 - random() % 30);
        pixels[at + 3] = random() % 256 < holes ? 0 : 255;
    }
    return pixels;
}

// Far apart, so that errors are large and colours leave the range, and close together.
const Palette FarColors{0xFF000000, 0xFFFFFFFF, 0xFFFF0000, 0xFF0040FF};
const Palette CloseColors{0xFF808080, 0xFF838281, 0xFF7E7F84, 0xFF858085, 0xFFF08010, 0xFFEE8214};

TEST(ErrorDiffusion, FollowsItsRulesInRowsOfAnyWidth) {
    for (const int width : {1, 2, 3, 17, 64}) {
        for (const Palette& palette : {FarColors, CloseColors}) {
            const Pixels pixels = MakeSoftPixels(width, 40, 0);
            EXPECT_EQ(Diffused(pixels, width, palette), DiffusedPlainly(pixels, width, palette)) << width;
        }
    }
}

TEST(ErrorDiffusion, HolesNeitherTakeNorMakeErrors) {
    for (const int width : {1, 2, 3, 17, 64}) {
        for (const unsigned holes : {30u, 200u, 256u}) {
            const Pixels pixels = MakeSoftPixels(width, 40, holes);
            EXPECT_EQ(Diffused(pixels, width, FarColors), DiffusedPlainly(pixels, width, FarColors)) << width;
        }
    }
}

TEST(ErrorDiffusion, ColorsOfThePaletteStayThemselves) {
    Pixels pixels;
    for (int i = 0; i < 600; ++i) {
        const Color color = CloseColors[static_cast<std::size_t>(i) % CloseColors.size()];
        pixels.insert(pixels.end(), {BlueOf(color), GreenOf(color), RedOf(color), 255});
    }
    const std::vector<std::uint8_t> indices = Diffused(pixels, 20, CloseColors);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        EXPECT_EQ(indices[i], i % CloseColors.size());
    }
}

// A row of greys; none is a hole.
Pixels Greys(const std::vector<int>& greys) {
    Pixels pixels;
    for (const int grey : greys) {
        const auto channel = static_cast<std::uint8_t>(grey);
        pixels.insert(pixels.end(), {channel, channel, channel, static_cast<std::uint8_t>(grey < 0 ? 0 : 255)});
    }
    return pixels;
}

using Indices = std::vector<std::uint8_t>;

// 150 lies between the two and becomes the first; 151 becomes the second.
const Palette Hundreds{0xFF646464, 0xFFC8C8C8};

// The second pixel is 16 too light: 7 go ahead, and 3, 5 and 1 to the row below. All but one of those who are given
// something are just so dark that nothing is left; the last tells whether it was given that much.
TEST(ErrorDiffusion, SixteenthsByHand) {
    EXPECT_EQ(Diffused(Greys({100, 116, 144, 100, 100, 100}), 3, Hundreds), (Indices{0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(Diffused(Greys({100, 116, 143, 100, 100, 100}), 3, Hundreds)[2], 0);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 148, 100, 100}), 3, Hundreds)[3], 1);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 147, 100, 100}), 3, Hundreds)[3], 0);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 97, 146, 100}), 3, Hundreds)[4], 1);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 97, 145, 100}), 3, Hundreds)[4], 0);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 97, 95, 150}), 3, Hundreds)[5], 1);
    EXPECT_EQ(Diffused(Greys({100, 116, 93, 97, 95, 149}), 3, Hundreds)[5], 0);
}

// The third and the fourth row go from right to left, and the third is given something by the second.
TEST(ErrorDiffusion, SixteenthsByHandInTheNextPairOfRows) {
    const auto behind = [](std::vector<int> greys, std::size_t at) {
        greys.insert(greys.begin(), 6, 100);
        return Diffused(Greys(greys), 3, Hundreds)[6 + at];
    };
    EXPECT_EQ(behind({144, 116, 100, 100, 100, 100}, 0), 1);
    EXPECT_EQ(behind({143, 116, 100, 100, 100, 100}, 0), 0);
    EXPECT_EQ(behind({93, 116, 100, 100, 100, 148}, 5), 1);
    EXPECT_EQ(behind({93, 116, 100, 100, 100, 147}, 5), 0);
    EXPECT_EQ(behind({93, 116, 100, 100, 146, 97}, 4), 1);
    EXPECT_EQ(behind({93, 116, 100, 100, 145, 97}, 4), 0);
    EXPECT_EQ(behind({93, 116, 100, 150, 95, 97}, 3), 1);
    EXPECT_EQ(behind({93, 116, 100, 149, 95, 97}, 3), 0);
    const auto below = [](int left, int middle, int right) {
        return Diffused(Greys({100, 100, 100, 100, 116, 93, left, middle, right, -1, -1, -1}), 3, Hundreds);
    };
    EXPECT_EQ(below(147, 95, 99), (Indices{0, 0, 0, 0, 0, 0, 0, 0, 0, HoleIndex, HoleIndex, HoleIndex}));
    EXPECT_EQ(below(148, 95, 99)[6], 1);
    EXPECT_EQ(below(97, 146, 99)[7], 1);
    EXPECT_EQ(below(97, 145, 99)[7], 0);
    EXPECT_EQ(below(97, 95, 150)[8], 1);
    EXPECT_EQ(below(97, 95, 149)[8], 0);
}

// What 7 sixteenths of an error become: rounded, from half on up; whole up to 16, by half up to 48, and no more.
TEST(ErrorDiffusion, ErrorsAreSoftenedByHand) {
    const Palette blackAndWhite{0xFF000000, 0xFFFFFFFF}; // 128 is the first level that becomes white
    const int levels[][2] = {{0, 0},   {1, 0},   {2, 1},   {8, 4},   {36, 16},  {38, 16},  {39, 16}, {41, 17},
                             {43, 17}, {45, 18}, {80, 25}, {81, 25}, {107, 31}, {109, 32}, {127, 32}};
    for (const auto& [error, given] : levels) {
        EXPECT_EQ(Diffused(Greys({error, 128 - given, 0, 0}), 2, blackAndWhite)[1], 1) << error;
        EXPECT_EQ(Diffused(Greys({error, 127 - given, 0, 0}), 2, blackAndWhite)[1], 0) << error;
        EXPECT_EQ(Diffused(Greys({255 - error, 127 + given, 0, 0}), 2, blackAndWhite)[1], 0) << error;
        EXPECT_EQ(Diffused(Greys({255 - error, 128 + given, 0, 0}), 2, blackAndWhite)[1], 1) << error;
    }
}

} // namespace
