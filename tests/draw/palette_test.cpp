// The colours of the paint window.
#include "draw/palette.h"

#include "tests/windows/expected/drawwindow.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using namespace lumbrix;

TEST(Palette, HasThirtyTwoColors) {
    for (std::int32_t index = 0; index < 32; ++index) {
        EXPECT_EQ(PaletteColor(index), tests::ExpectedPalette[static_cast<std::size_t>(index)]) << index;
    }
}

TEST(Palette, SomeColorsAreALittleOff) {
    EXPECT_EQ(PaletteColor(6), ColorOf(0, 64, 128));
    EXPECT_EQ(PaletteColor(7), ColorOf(196, 193, 196));
    EXPECT_EQ(PaletteColor(31), ColorOf(228, 228, 228));
}

TEST(Palette, NumberThatNoColorHasIsBlack) {
    for (const std::int32_t index : {-1, 32, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(PaletteColor(index), 0x000000u) << index;
    }
}

} // namespace
