// The table of the main window, without a window.
#include "mainwindow/layout.h"

#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/mainwindow.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using namespace lumbrix;
using namespace lumbrix::mainwindow;

const Control& Row(int id) {
    for (const Control& control : MainWindowControls) {
        if (control.id == id) {
            return control;
        }
    }
    throw std::out_of_range("no such control");
}

bool LiesWithin(const Control& inner, const Control& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

TEST(MainWindowTable, IsAsExpected) { tests::ExpectTable(MainWindowLayout, tests::ExpectedMainWindow()); }

TEST(MainWindowTable, HasThirtySixControlsOfDistinctIds) {
    std::set<int> ids;
    for (const Control& control : MainWindowControls) {
        ids.insert(control.id);
    }
    EXPECT_EQ(std::size(MainWindowControls), 36u);
    EXPECT_EQ(ids.size(), 36u);
}

TEST(MainWindowTable, EveryControlLiesInTheWindow) {
    for (const Control& control : MainWindowControls) {
        EXPECT_GE(control.x, 0) << control.id;
        EXPECT_GE(control.y, 0) << control.id;
        EXPECT_LE(control.x + control.width, MainWindowLayout.width) << control.id;
        EXPECT_LE(control.y + control.height, MainWindowLayout.height) << control.id;
    }
}

TEST(MainWindowTable, FramesHoldWhatBelongsToThem) {
    const std::pair<int, std::vector<int>> frames[] = {
        {SourceFrame,
         {SingleFileLabel, SizeLabel, SourceFileBox, SourceFileButton, SourceFolderBox, SourceFolderButton,
          SourceFolderLabel}},
        {OutputTypeFrame, {BmpRadio, JpgRadio, GifRadio, TiffRadio, PngRadio, SglRadio}},
        {HeightFrame, {HeightBox}},
        {RotateFrame, {Rotate0Radio, Rotate90Radio, Rotate180Radio, Rotate270Radio}},
        {FlipFrame, {FlipVerticalCheck, FlipHorizontalCheck}}};
    for (const auto& [frame, inside] : frames) {
        for (const int id : inside) {
            EXPECT_TRUE(LiesWithin(Row(id), Row(frame))) << id;
        }
    }
}

TEST(MainWindowTable, TargetStandsOutsideTheSourcesAndLeftOfThem) {
    EXPECT_FALSE(LiesWithin(Row(TargetBox), Row(SourceFrame)));
    EXPECT_LT(Row(TargetBox).x, Row(SourceFileBox).x);
    EXPECT_EQ(Row(FlipFrame).x, Row(HeightFrame).x + 1);
}

TEST(MainWindowTable, SmallButtonsAloneAreBold) {
    for (const Control& control : MainWindowControls) {
        EXPECT_EQ(control.font == BoldFont, std::string(control.caption) == "..") << control.id;
    }
}

TEST(MainWindowTable, BoxesAndButtonsAloneKeepTheSystemsColor) {
    for (const Control& control : MainWindowControls) {
        const bool isBoxOrButton = control.kind == ControlKind::TextBox || control.kind == ControlKind::PushButton;
        EXPECT_EQ(control.background == SystemColor, isBoxOrButton) << control.id;
    }
}

TEST(MainWindowTable, EachGroupOfRadiosHasOneStart) {
    for (const Control& control : MainWindowControls) {
        const bool isFirst = control.id == BmpRadio || control.id == Rotate0Radio;
        EXPECT_EQ((control.extraStyle & StartsGroup) != 0, isFirst) << control.id;
    }
}

TEST(MainWindowTable, RadiosStandInTheOrderOfTheirTypesAndAngles) {
    EXPECT_EQ(OutputRadioIds, (std::array<Id, 6>{BmpRadio, JpgRadio, GifRadio, TiffRadio, PngRadio, SglRadio}));
    EXPECT_EQ(RotationRadioIds, (std::array<Id, 4>{Rotate0Radio, Rotate90Radio, Rotate180Radio, Rotate270Radio}));
}

TEST(FontHeight, IsNegativeAndInWholeNumbers) {
    EXPECT_EQ(FontHeight(10, 96), -13);
    EXPECT_EQ(FontHeight(12, 96), -16);
    EXPECT_EQ(FontHeight(10, 120), -16);
}

} // namespace
