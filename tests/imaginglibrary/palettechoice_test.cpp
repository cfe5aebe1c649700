// Palettes of few entries for colours that are counted by hand.
#include "imaginglibrary/operations/colorhistogram.h"
#include "imaginglibrary/operations/palettechoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using namespace imaginglibrary;

// A cell for each grey and how many pixels have it.
std::vector<ColorCell> GreyCells(const std::vector<std::pair<std::uint8_t, std::uint32_t>>& greys) {
    std::vector<ColorCell> cells;
    for (const auto& [grey, pixels] : greys) {
        const std::uint64_t sum = std::uint64_t{grey} * pixels;
        cells.push_back({pixels, sum, sum, sum});
    }
    return cells;
}

std::vector<int> GreysOf(Palette palette) {
    std::vector<int> greys;
    for (const Color color : palette) {
        EXPECT_EQ(RedOf(color), GreenOf(color));
        EXPECT_EQ(RedOf(color), BlueOf(color));
        EXPECT_EQ(AlphaOf(color), 255);
        greys.push_back(RedOf(color));
    }
    std::ranges::sort(greys);
    return greys;
}

using Greys = std::vector<int>;

TEST(PaletteChoiceByHand, ColorsThatFitAreTakenAsTheyAre) {
    EXPECT_EQ(ChoosePalette(GreyCells({{9, 1}, {3, 5}}), 2), (Palette{0xFF090909, 0xFF030303}));
}

TEST(PaletteChoiceByHand, NeighboursAreUnitedAtTheirRoundedMean) {
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 1}, {10, 1}, {200, 1}}), 2)), (Greys{5, 200}));
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 1}, {11, 1}, {200, 1}}), 2)), (Greys{6, 200}));
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 3}, {11, 2}, {200, 1}}), 2)), (Greys{4, 200}));
}

TEST(PaletteChoiceByHand, FewPixelsGiveWayToMany) {
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 100}, {10, 1}, {21, 100}}), 2)), (Greys{0, 21}));
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 100}, {11, 1}, {21, 100}}), 2)), (Greys{0, 21}));
    // Three far away are worth less than a thousand near by, two hundred more.
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 1000}, {40, 1000}, {255, 1}}), 2)), (Greys{0, 40}));
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{0, 1000}, {40, 1000}, {255, 200}}), 2)), (Greys{20, 255}));
}

TEST(PaletteChoiceByHand, ChannelWithTheWidestSpreadIsCut) {
    for (const unsigned shift : {0u, 8u, 16u}) {
        const auto cellOf = [&](unsigned narrow, unsigned wide) {
            const unsigned other = shift == 0 ? 8 : 0;
            const Color color = narrow << other | wide << shift;
            return ColorCell{1, RedOf(color), GreenOf(color), BlueOf(color)};
        };
        Palette palette = ChoosePalette({cellOf(0, 0), cellOf(10, 0), cellOf(0, 100), cellOf(10, 100)}, 2);
        std::ranges::sort(palette);
        const Color low = 0xFF000000 | 5u << (shift == 0 ? 8 : 0);
        Palette expected{low, low | 100u << shift};
        std::ranges::sort(expected);
        EXPECT_EQ(palette, expected) << shift;
    }
}

TEST(PaletteChoiceByHand, OneColorInSeveralCellsIsOneEntry) {
    EXPECT_EQ(GreysOf(ChoosePalette(GreyCells({{7, 1}, {7, 2}, {7, 3}}), 2)), Greys{7});
}

// A cut that parts two single pixels one level apart helps by half a squared level.
TEST(PaletteChoiceByHand, LeastDifferenceIsStillWorthAnEntry) {
    const auto cellsOf = [](std::vector<Color> colors) {
        std::vector<ColorCell> cells;
        for (const Color color : colors) {
            cells.push_back({1, RedOf(color), GreenOf(color), BlueOf(color)});
        }
        return cells;
    };
    Palette palette = ChoosePalette(cellsOf({0xFF404040, 0xFF404041, 0xFFF0F0F0, 0xFFF0F0F0}), 3);
    std::ranges::sort(palette);
    EXPECT_EQ(palette, (Palette{0xFF404040, 0xFF404041, 0xFFF0F0F0}));
}

// A cut goes through the middle of a crowd where that helps more than the next one; the entries then move to what is
// nearest to them.
TEST(PaletteChoiceByHand, EntriesMoveToTheMeanOfWhatIsNearest) {
    const auto cells = GreyCells({{0, 1}, {60, 1}, {100, 1}, {140, 1}, {200, 1}});
    const Greys greys = GreysOf(ChoosePalette(cells, 2));
    ASSERT_EQ(greys.size(), 2u);
    int left = 0, leftCount = 0, right = 0, rightCount = 0;
    for (const int grey : {0, 60, 100, 140, 200}) {
        const bool isLeft = std::abs(grey - greys[0]) < std::abs(grey - greys[1]);
        (isLeft ? left : right) += grey;
        ++(isLeft ? leftCount : rightCount);
    }
    EXPECT_EQ(greys[0], (left + leftCount / 2) / leftCount);
    EXPECT_EQ(greys[1], (right + rightCount / 2) / rightCount);
}

// Each round moves some entries, up to the fourth, which is the last.
TEST(PaletteChoiceByHand, EntriesMoveInFourRounds) {
    const auto cells = GreyCells({{254, 7}, {173, 9}, {0, 7},   {51, 3},  {183, 5}, {125, 1}, {244, 2}, {137, 2},
                                  {30, 1},  {236, 4}, {218, 1}, {240, 9}, {45, 4},  {213, 7}, {231, 6}, {188, 5},
                                  {81, 5},  {114, 2}, {156, 1}, {37, 9},  {25, 3},  {130, 3}, {186, 3}, {135, 5}});
    EXPECT_EQ(GreysOf(ChoosePalette(cells, 4)), (Greys{29, 117, 179, 235}));
}

TEST(ColorHistogramByHand, MeanOfACellIsRounded) {
    EXPECT_EQ((ColorCell{2, 1, 3, 4}.Mean()), MakeColor(1, 2, 2));
    EXPECT_EQ((ColorCell{3, 1, 2, 763}.Mean()), MakeColor(0, 1, 254));
    EXPECT_EQ((ColorCell{3, 4, 5, 764}.Mean()), MakeColor(1, 2, 255));
}

} // namespace
