// What the paint window begins with, and what its lists and colour fields change.
#include "draw/drawingstate.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

constexpr std::int32_t HollowItem = 0;
constexpr std::int32_t SolidItem = 1;
constexpr std::int32_t CrossedItem = 6;
constexpr FillValue StartFill = 0xC4C1C4;
constexpr int RedField = 120;
constexpr FillValue RedFill = 0x0000FF;

TEST(DrawingStart, IsASolidThinBlackLineOnWhite) {
    const DrawingState state;
    EXPECT_EQ(state.currentTool, 181);
    EXPECT_EQ(state.penColor, 0x000000u);
    EXPECT_EQ(state.fillColor, StartFill);
    EXPECT_EQ(state.savedFillColor, StartFill);
    EXPECT_EQ(state.fillStyle, 0);
    EXPECT_EQ(state.penWidth, 1);
    EXPECT_EQ(state.penType, 0);
    EXPECT_EQ(state.background, 0xFFFFFF);
    EXPECT_EQ(state.enteredText, "");
    EXPECT_FALSE(state.isDragging);
    EXPECT_EQ(state.rubberStart.x, -1);
}

TEST(TextReliefs, AreCountedFromTheFlatOne) {
    EXPECT_EQ(static_cast<int>(DrawingState().textStyle), 0);
    EXPECT_EQ(static_cast<int>(TextRelief::Normal), 0);
    EXPECT_EQ(static_cast<int>(TextRelief::Sunken), 1);
    EXPECT_EQ(static_cast<int>(TextRelief::Raised), 2);
}

TEST(ToolChoice, IsOneOfTheElevenOptions) {
    DrawingState state;
    ChooseTool(state, 191);
    EXPECT_EQ(state.currentTool, 191);
    for (const int other : {180, 192, 171, 0}) {
        ChooseTool(state, other);
        EXPECT_EQ(state.currentTool, 191) << other;
    }
    ChooseTool(state, 181);
    EXPECT_EQ(state.currentTool, 181);
}

TEST(PatternChoice, IsTheFillStyleOneHigher) {
    for (std::int32_t item = 0; item < 8; ++item) {
        DrawingState state;
        ChoosePattern(state, item);
        EXPECT_EQ(state.fillStyle, item - 1);
    }
}

TEST(PatternChoice, HollowPutsTheFillColorAside) {
    DrawingState state;
    ChoosePattern(state, HollowItem);
    EXPECT_EQ(state.fillColor, -2);
    EXPECT_EQ(state.savedFillColor, StartFill);
}

TEST(PatternChoice, AnyOtherBringsTheFillColorBack) {
    for (const std::int32_t item : {SolidItem, CrossedItem}) {
        DrawingState state;
        ChoosePattern(state, HollowItem);
        ChoosePattern(state, item);
        EXPECT_EQ(state.fillColor, StartFill);
    }
}

TEST(PatternChoice, HollowTwiceInARowLosesTheFillColor) {
    DrawingState state;
    ChoosePattern(state, HollowItem);
    ChoosePattern(state, HollowItem);
    EXPECT_EQ(state.savedFillColor, -2);
    ChoosePattern(state, CrossedItem);
    EXPECT_EQ(state.fillColor, -2);
    EXPECT_EQ(state.fillStyle, 5);
}

TEST(PatternChoice, LostFillColorComesBackWithAColorField) {
    DrawingState state;
    ChoosePattern(state, HollowItem);
    ChoosePattern(state, HollowItem);
    EXPECT_TRUE(ChooseFillColor(state, RedField));
    ChoosePattern(state, CrossedItem);
    EXPECT_EQ(state.fillColor, RedFill);
}

TEST(PatternChoice, HollowKeepsAColorThatWasChosenUnderHollow) {
    DrawingState state;
    ChoosePattern(state, HollowItem);
    ChooseFillColor(state, RedField);
    EXPECT_EQ(state.fillStyle, -1);
    EXPECT_EQ(state.fillColor, RedFill);
    ChoosePattern(state, HollowItem);
    EXPECT_EQ(state.savedFillColor, RedFill);
}

TEST(PenChoice, IsOneMoreThanTheItemAndAtLeastOne) {
    DrawingState state;
    for (const auto& [item, width] : {std::pair{9, 10}, {1, 2}, {0, 1}, {-1, 1}, {-5, 1}}) {
        ChoosePenWidth(state, item);
        EXPECT_EQ(state.penWidth, width);
    }
}

TEST(PenChoice, TypeIsTheItem) {
    DrawingState state;
    for (const std::int32_t item : {4, 2, 0}) {
        ChoosePenType(state, item);
        EXPECT_EQ(state.penType, item);
    }
}

TEST(PenChoice, WiderPenTakesNoTypeYetKeepsItsOwn) {
    DrawingState state;
    EXPECT_TRUE(TakesPenType(state));
    ChoosePenType(state, 3);
    ChoosePenWidth(state, 1);
    EXPECT_FALSE(TakesPenType(state));
    EXPECT_EQ(state.penType, 3);
    ChoosePenWidth(state, 0);
    EXPECT_TRUE(TakesPenType(state));
}

TEST(ColorFields, ShowThePaletteInOrder) {
    EXPECT_EQ(ColorOfField(111), 0x000000u);
    EXPECT_EQ(ColorOfField(118), 0xC4C1C4u);
    EXPECT_EQ(ColorOfField(127), 0xA4A4A4u);
    EXPECT_EQ(ColorOfField(142), 0xE4E4E4u);
}

TEST(ColorFields, AreNoOtherControls) {
    for (const int id : {110, 143, 144, 0, -1, 181}) {
        EXPECT_FALSE(ColorOfField(id).has_value()) << id;
    }
}

TEST(ColorFields, LeftButtonSetsThePenAlone) {
    DrawingState state;
    EXPECT_TRUE(ChoosePenColor(state, RedField));
    EXPECT_EQ(state.penColor, 0x0000FFu);
    EXPECT_EQ(state.fillColor, StartFill);
    EXPECT_EQ(state.savedFillColor, StartFill);
}

TEST(ColorFields, RightButtonSetsTheFillAndWhatComesBack) {
    DrawingState state;
    EXPECT_TRUE(ChooseFillColor(state, RedField));
    EXPECT_EQ(state.penColor, 0x000000u);
    EXPECT_EQ(state.fillColor, RedFill);
    EXPECT_EQ(state.savedFillColor, RedFill);
    EXPECT_EQ(state.fillStyle, 0);
}

TEST(ColorFields, IndicatorsChangeNothing) {
    DrawingState state;
    ChoosePenColor(state, RedField);
    ChooseFillColor(state, RedField);
    for (const int id : {143, 144}) {
        EXPECT_FALSE(ChoosePenColor(state, id));
        EXPECT_FALSE(ChooseFillColor(state, id));
    }
    EXPECT_EQ(state.penColor, 0x0000FFu);
    EXPECT_EQ(state.fillColor, RedFill);
    EXPECT_EQ(state.savedFillColor, RedFill);
}

} // namespace
