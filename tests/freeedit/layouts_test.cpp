// The tables of the Free Edit windows, without a window, and how the bar is laid out.
#include "freeedit/skewlayout.h"
#include "freeedit/transformlayout.h"
#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/skewdialog.h"
#include "tests/windows/expected/transformwindow.h"

#include <gtest/gtest.h>

#include <set>

namespace lumbrix::transformwindow {

void PrintTo(const ControlPlace& place, std::ostream* stream) {
    *stream << place.id << " at " << place.x << ',' << place.y << ' ' << place.width << 'x' << place.height;
}

} // namespace lumbrix::transformwindow

namespace {

using namespace lumbrix;
using namespace lumbrix::transformwindow;

TEST(TransformWindowTable, IsAsExpected) {
    tests::ExpectTable(TransformWindowLayout, tests::ExpectedTransformWindow());
}

TEST(TransformWindowTable, IdsAreUnique) {
    std::set<int> ids;
    for (const Control& control : TransformWindowControls) {
        EXPECT_TRUE(ids.insert(control.id).second) << control.id;
    }
}

TEST(TransformWindowTable, PictureIsLoadedByTimer2002) { EXPECT_EQ(LoadTimer, 2002); }

TEST(TransformWindowTable, ThreeLabelsActAsButtons) {
    EXPECT_EQ(ButtonLabels, (std::array<Id, 3>{SaveLabel, SkewLabel, DrawLabel}));
}

TEST(TransformWindowTable, HoveredLabelIsDarker) { EXPECT_EQ(HoveredColor, ColorOf(87, 87, 87)); }

TEST(CanvasTable, IsAWhitePopupWithoutAFrame) {
    EXPECT_STREQ(CanvasLayout.caption, "");
    EXPECT_EQ(CanvasLayout.style, 0x90000000u);
    EXPECT_EQ(CanvasLayout.extendedStyle, 0u);
    EXPECT_EQ(CanvasLayout.background, 0xFFFFFFu);
    EXPECT_EQ(CanvasLayout.x, 0);
    EXPECT_EQ(CanvasLayout.y, 0);
    EXPECT_EQ(CanvasLayout.width, 404);
    EXPECT_EQ(CanvasLayout.height, 239);
    EXPECT_TRUE(CanvasLayout.controls.empty());
}

TEST(Bar, StandsAtTheLowerBorderFromTheRight) {
    EXPECT_EQ(BarPlaces({853, 630}), (std::array<ControlPlace, 8>{{{BarLabel, 0, 600, 853, 30},
                                                                   {SaveLabel, 768, 605, 65, 20},
                                                                   {StretchLabel, 658, 600, 90, 10},
                                                                   {StretchSlider, 658, 610, 100, 20},
                                                                   {RotationLabel, 548, 600, 90, 10},
                                                                   {RotationSlider, 548, 610, 100, 20},
                                                                   {SkewLabel, 493, 607, 35, 16},
                                                                   {DrawLabel, 458, 607, 35, 16}}}));
}

TEST(Bar, LeavesItsPlacesWhereTheWindowIsTooSmall) {
    const auto places = BarPlaces({100, 20});
    EXPECT_EQ(places[0], (ControlPlace{BarLabel, 0, -10, 100, 30}));
    EXPECT_EQ(places[1], (ControlPlace{SaveLabel, 15, -5, 65, 20}));
    EXPECT_EQ(places[7], (ControlPlace{DrawLabel, -295, -3, 35, 16}));
}

TEST(Bar, CanvasTakesTheRest) { EXPECT_EQ(CanvasSize({853, 630}), (PixelSize{853, 600})); }

TEST(Bar, PickerOfAPictureIsNeverSeen) {
    EXPECT_EQ(HiddenAtEachSize, (std::array<Id, 3>{SelectLabel, SelectButton, PathBox}));
}

TEST(SkewDialogTable, IsAsExpected) { tests::ExpectTable(skewdialog::SkewDialogLayout, tests::ExpectedSkewDialog()); }

TEST(SkewDialogTable, BoxesAreInTheOrderOfTheCornersTexts) {
    const std::array<int, 6> expected{1004, 1005, 1009, 1010, 1017, 1016};
    ASSERT_EQ(skewdialog::CornerBoxes.size(), expected.size());
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), skewdialog::CornerBoxes.begin()));
}

} // namespace
