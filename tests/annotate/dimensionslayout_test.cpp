// The table of the crop dimensions dialog, without a window.
#include "annotate/dimensionslayout.h"

#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/cropdimensions.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace lumbrix::cropdimensions;

TEST(CropDimensionsTable, IsAsExpected) { tests::ExpectTable(CropDimensionsLayout, tests::ExpectedCropDimensions()); }

TEST(CropDimensionsTable, HasElevenControlsNumberedInTheirOrder) {
    int id = 1001;
    for (const Control& control : CropDimensionsControls) {
        EXPECT_EQ(control.id, id);
        ++id;
    }
    EXPECT_EQ(std::size(CropDimensionsControls), 11u);
}

TEST(CropDimensionsTable, EveryControlLiesInTheWindow) {
    for (const Control& control : CropDimensionsControls) {
        EXPECT_GE(control.x, 0) << control.id;
        EXPECT_GE(control.y, 0) << control.id;
        EXPECT_LE(control.x + control.width, CropDimensionsLayout.width) << control.id;
        EXPECT_LE(control.y + control.height, CropDimensionsLayout.height) << control.id;
    }
}

TEST(CropDimensionsTable, EachBoxStandsBehindItsLabel) {
    const auto row = [](int id) { return CropDimensionsControls[id - CropCornerLabel]; };
    const std::pair<int, int> pairs[] = {{CropLeftLabel, CropLeftBox},
                                         {CropTopLabel, CropTopBox},
                                         {CropWidthLabel, CropWidthBox},
                                         {CropHeightLabel, CropHeightBox}};
    for (const auto& [label, box] : pairs) {
        EXPECT_EQ(row(label).y, row(box).y) << label;
        EXPECT_EQ(row(label).x + row(label).width, row(box).x) << label;
    }
}

TEST(CropDimensionsTable, FontsAndColorsAreTheSystems) {
    for (const Control& control : CropDimensionsControls) {
        EXPECT_EQ(control.font, NoFont) << control.id;
        EXPECT_EQ(control.background, SystemColor) << control.id;
    }
    EXPECT_EQ(CropDimensionsLayout.background, SystemColor);
}

TEST(CropDimensionsTable, WindowHasNoSystemMenu) { EXPECT_EQ(CropDimensionsLayout.style & HasSystemMenu, 0u); }

} // namespace
