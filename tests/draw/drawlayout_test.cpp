// The paint window without a window, on screens and pictures of several sizes.
#include "draw/drawlayout.h"

#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/drawwindow.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace lumbrix;
using drawwindow::DrawWindowLayout;

OwnedLayout LayoutOn(PixelSize screen, PixelSize picture) {
    return DrawWindowLayout(screen, picture).value_or(OwnedLayout());
}

template <class Texts> std::vector<std::string> TextsOf(const Texts& texts) { return {texts.begin(), texts.end()}; }

TEST(DrawWindowTable, IsAsExpected) {
    tests::ExpectTable(LayoutOn({682, 472}, {320, 240}), tests::ExpectedDrawWindow({682, 472, 320, 240}));
}

TEST(DrawWindowTable, FollowsTheScreen) {
    tests::ExpectTable(LayoutOn({341, 300}, {10, 20}), tests::ExpectedDrawWindow({341, 300, 10, 20}));
}

TEST(DrawWindowTable, CanvasLeavesTheColumnAtTheRight) {
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {399, 10}), (PixelSize{399, 10}));
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {400, 10}), (PixelSize{400, 10}));
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {401, 10}), (PixelSize{400, 10}));
}

TEST(DrawWindowTable, CanvasLeavesTheRowsAtTheBottom) {
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {10, 334}), (PixelSize{10, 334}));
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {10, 335}), (PixelSize{10, 335}));
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {10, 336}), (PixelSize{10, 335}));
}

TEST(DrawWindowTable, CanvasOfALargePictureIsWhatIsLeft) {
    tests::ExpectTable(LayoutOn({682, 472}, {4000, 3000}), tests::ExpectedDrawWindow({682, 472, 582, 407}));
}

TEST(DrawWindowTable, CanvasOnATinyScreenHasNoSize) {
    EXPECT_EQ(drawwindow::CanvasSize({90, 60}, {10, 10}), (PixelSize{-10, -5}));
}

TEST(DrawWindowTable, CanvasOfAPictureWithoutASizeHasNone) {
    EXPECT_EQ(drawwindow::CanvasSize({500, 400}, {0, 0}), (PixelSize{0, 0}));
}

TEST(DrawWindowTable, NeedsAScreen) {
    EXPECT_FALSE(DrawWindowLayout({0, 400}, {10, 10}));
    EXPECT_FALSE(DrawWindowLayout({500, 0}, {10, 10}));
    EXPECT_TRUE(DrawWindowLayout({1, 1}, {10, 10}));
}

TEST(DrawWindowTable, NoControlHasAFontOfItsOwn) {
    const OwnedLayout layout = LayoutOn({682, 472}, {320, 240});
    EXPECT_TRUE(layout.fonts.empty());
    for (const OwnedControl& control : layout.controls) {
        EXPECT_EQ(control.font, NoFont) << control.id;
    }
}

TEST(DrawWindowTable, IdsAreUnique) {
    std::set<int> ids;
    for (const OwnedControl& control : LayoutOn({682, 472}, {320, 240}).controls) {
        EXPECT_TRUE(ids.insert(control.id).second) << control.id;
    }
    EXPECT_EQ(ids.size(), 59u);
}

TEST(DrawWindowTable, HidesWhatIsExpected) {
    std::set<int> expected;
    for (const tests::ExpectedControl& control : tests::ExpectedDrawWindow({682, 472, 320, 240}).controls) {
        if (control.isHidden) {
            expected.insert(control.id);
        }
    }
    EXPECT_EQ(expected, (std::set<int>{147, 150}));
    EXPECT_EQ(std::set<int>(drawwindow::HiddenAtStart.begin(), drawwindow::HiddenAtStart.end()), expected);
}

TEST(DrawWindowTable, ButtonsOfTheRightColumnHaveTheirNumbers) {
    EXPECT_EQ(drawwindow::QuitButton, 2);
    EXPECT_EQ(drawwindow::TextButton, 147);
    EXPECT_EQ(drawwindow::OpenButton, 150);
    EXPECT_EQ(drawwindow::SaveButton, 151);
    EXPECT_EQ(drawwindow::ClearButton, 152);
    EXPECT_EQ(drawwindow::UndoButton, 192);
    EXPECT_EQ(drawwindow::RedoButton, 193);
}

TEST(DrawWindowLists, OfferWhatIsExpected) {
    EXPECT_EQ(TextsOf(drawwindow::Patterns), tests::ExpectedPatterns);
    EXPECT_EQ(TextsOf(drawwindow::PenWidths), tests::ExpectedPenWidths);
    EXPECT_EQ(TextsOf(drawwindow::PenTypes), tests::ExpectedPenTypes);
}

TEST(DrawWindowLists, BeginWithASolidPenOfOnePixelAndASolidFill) {
    EXPECT_STREQ(drawwindow::Patterns[drawwindow::StartPattern], "Solid");
    EXPECT_STREQ(drawwindow::PenWidths[drawwindow::StartPenWidth], "Pen width =   1");
    EXPECT_STREQ(drawwindow::PenTypes[drawwindow::StartPenType], "Pen type = Solid");
}

TEST(DrawWindowOptions, BeginWithLineAndLeaveThoseForTextOut) {
    EXPECT_EQ(drawwindow::StartOption, 181);
    EXPECT_EQ(drawwindow::LastOptionClearedAtStart, 188);
}

TEST(DrawWindowColors, BeginBlackOnWhite) {
    EXPECT_EQ(drawwindow::StartPenColor, 0x000000u);
    EXPECT_EQ(drawwindow::StartFillColor, 0xC4C1C4u);
    EXPECT_EQ(drawwindow::CanvasColor, 0xFFFFFFu);
}

} // namespace
