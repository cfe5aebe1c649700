// Layouts as tables, and layouts that are worked out.
#include "toolkit/layout.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

constexpr WindowFont TableFonts[] = {{"Arial", 10, 400}, {"Arial", 12, 700, FontSlant::Italic, FontLines::Underline}};
constexpr Control TableRows[] = {
    {7, ControlKind::Label, "first", 1, 2, 3, 4, 1, 0x10, 0x20, 0x30, 0x40},
    {9, ControlKind::TrackBar, "second", 5, 6, 7, 8},
};
constexpr WindowLayout Table{
    .caption = "title",
    .x = 1,
    .y = 2,
    .width = 3,
    .height = 4,
    .style = 5,
    .extendedStyle = 6,
    .background = 7,
    .fonts = TableFonts,
    .controls = TableRows,
};

TEST(OwnedLayout, HasAllOfTheTable) {
    const OwnedLayout layout(Table);
    EXPECT_EQ(layout.caption, "title");
    EXPECT_EQ((std::vector{layout.x, layout.y, layout.width, layout.height}), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(layout.style, 5u);
    EXPECT_EQ(layout.extendedStyle, 6u);
    EXPECT_EQ(layout.background, 7u);
    ASSERT_EQ(layout.fonts.size(), 2u);
    EXPECT_EQ(layout.fonts[1].slant, FontSlant::Italic);
    ASSERT_EQ(layout.controls.size(), 2u);
    const OwnedControl& row = layout.controls[0];
    EXPECT_EQ(row.id, 7);
    EXPECT_EQ(row.kind, ControlKind::Label);
    EXPECT_EQ(row.caption, "first");
    EXPECT_EQ((std::vector{row.x, row.y, row.width, row.height, row.font}), (std::vector{1, 2, 3, 4, 1}));
    EXPECT_EQ(row.background, 0x10u);
    EXPECT_EQ(row.extraStyle, 0x20u);
    EXPECT_EQ(row.text, 0x30u);
    EXPECT_EQ(row.extraExtendedStyle, 0x40u);
    EXPECT_EQ(layout.controls[1].kind, ControlKind::TrackBar);
}

TEST(OwnedLayout, RowsHaveDefaults) {
    const OwnedControl row = OwnedLayout(Table).controls[1];
    EXPECT_EQ(row.font, 0);
    EXPECT_EQ(row.background, SystemColor);
    EXPECT_EQ(row.text, SystemColor);
    EXPECT_EQ(row.extraStyle, 0u);
    EXPECT_EQ(row.extraExtendedStyle, 0u);
}

TEST(Row, IsFoundByItsId) {
    EXPECT_EQ(FindRow(TableRows, 9), &TableRows[1]);
    EXPECT_EQ(FindRow(TableRows, 8), nullptr);
    OwnedLayout layout(Table);
    FindRow(layout.controls, 7)->caption = "other";
    EXPECT_EQ(layout.controls[0].caption, "other");
}

TEST(Color, IsPackedWithRedInTheLowestByte) {
    EXPECT_EQ(ColorOf(128, 160, 200), 0xC8A080u);
    EXPECT_EQ(ColorOf(0, 255, 255), Cyan);
    EXPECT_EQ(ColorOf(255, 0, 0), Red);
}

TEST(Styles, AreThePlatformsNumbers) {
    EXPECT_EQ(LabelAsButton, 0x00800000u | 0x1000u | 0x0200u | 0x0001u);
    EXPECT_EQ(LabelAtRight, 0x0002u);
    EXPECT_EQ(LabelTakesMouse, 0x0100u);
    EXPECT_EQ(ShowsSelectedRange, 0x0020u);
    EXPECT_EQ(ClipsSiblings, 0x04000000u);
    EXPECT_EQ(BareWindow, 0x90000000u);
    EXPECT_EQ(SeeThrough, 0x20u);
    EXPECT_EQ(StaticEdge, 0x20000u);
    EXPECT_EQ(ClientEdge, 0x200u);
    EXPECT_EQ(AlwaysOnTop, 0x8u);
}

TEST(DialogUnits, ArePixelsTimes1024DividedAndRoundedDown) {
    EXPECT_EQ(UnitsOfPixels(100, 1536), 66);
    EXPECT_EQ(UnitsOfPixels(3, 1536), 2);
    EXPECT_EQ(UnitsOfPixels(-1, 1536), -1);
    EXPECT_EQ(UnitsOfPixels(-3, 1536), -2);
    EXPECT_EQ(UnitsOfPixels(0, 1536), 0);
    EXPECT_EQ(UnitsOfPixels(30000000, 1024), 30000000);
}

TEST(FontHeight, IsBelowZeroAndCutToWholePixels) {
    EXPECT_EQ(FontHeight(10, 96), -13);
    EXPECT_EQ(FontHeight(12, 96), -16);
    EXPECT_EQ(FontHeight(10, 144), -20);
}

} // namespace
