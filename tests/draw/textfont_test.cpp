// What the window for entering text keeps, and which font it makes.
#include "draw/textfont.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using namespace lumbrix;

constexpr FontResult ChosenWith(std::int32_t weight) {
    FontResult result;
    result.weight = weight;
    return result;
}

FontResult Fancy() {
    return {.face = "Arial",
            .height = -99,
            .tenthsOfPoints = 245,
            .weight = 700,
            .italic = 255,
            .underline = 1,
            .strikeout = 1,
            .charset = 204,
            .color = 0x123456};
}

TEST(AngleDigits, HaveAFractionOnlyWhereThereIsOne) {
    EXPECT_EQ(AngleText(0), "0");
    EXPECT_EQ(AngleText(120), "12");
    EXPECT_EQ(AngleText(125), "12.5");
    EXPECT_EQ(AngleText(5), "0.5");
    EXPECT_EQ(AngleText(3600), "360");
}

TEST(AngleDigits, HaveASignBelowNone) {
    EXPECT_EQ(AngleText(-5), "-0.5");
    EXPECT_EQ(AngleText(-120), "-12");
    EXPECT_EQ(AngleText(-125), "-12.5");
    EXPECT_EQ(AngleText(INT32_MIN), "-214748364.8");
}

TEST(TypedAngle, IsKeptToATenthOfADegree) {
    EXPECT_EQ(AngleTenthsOf("12.5"), 125);
    EXPECT_EQ(AngleTenthsOf("12"), 120);
    EXPECT_EQ(AngleTenthsOf("-12.5"), -125);
    EXPECT_EQ(AngleTenthsOf(".5"), 5);
    EXPECT_EQ(AngleTenthsOf("12.54"), 125);
    EXPECT_EQ(AngleTenthsOf("12.56"), 126);
}

TEST(TypedAngle, BetweenTwoTenthsIsTheEvenOne) {
    EXPECT_EQ(AngleTenthsOf("0.25"), 2);
    EXPECT_EQ(AngleTenthsOf("0.75"), 8);
}

TEST(TypedAngle, ThatIsNoNumberIsNone) {
    EXPECT_EQ(AngleTenthsOf(""), 0);
    EXPECT_EQ(AngleTenthsOf("steep"), 0);
    EXPECT_EQ(AngleTenthsOf("45 degrees"), 450);
}

TEST(TypedAngle, ReopensAsItWasStored) { EXPECT_EQ(AngleText(AngleTenthsOf("12.5")), "12.5"); }

TEST(TextFontStart, IsEmpty) {
    const TextFont font;
    EXPECT_EQ(font.lastEnteredText, "");
    EXPECT_EQ(font.name, "");
    EXPECT_EQ(font.angleTenths, 0);
}

TEST(FontChange, OpensTheFirstTimeOnTheDefaults) {
    TextFont font;
    BeginFontChange(font, 0x0000FF, "0");
    const FontPreset preset = PresetOf(font);
    EXPECT_EQ(preset.face, "Microsoft Sans Serif");
    EXPECT_EQ(preset.points, 10);
    EXPECT_EQ(preset.style, 0);
    EXPECT_EQ(font.color, 0x0000FF);
}

TEST(FontChange, DefaultsTakeTheFillColorAlsoWhereThereIsNone) {
    TextFont font;
    BeginFontChange(font, NoFill, "0");
    EXPECT_EQ(font.color, -2);
}

TEST(FontChange, DefaultsReplaceWhatIsLeftWithoutAName) {
    TextFont font{.lastEnteredText = "kept", .points = 3, .style = 15, .color = 9, .charset = 7, .angleTenths = 100};
    BeginFontChange(font, 1, "2");
    EXPECT_EQ(font, (TextFont{"kept", "Microsoft Sans Serif", 10, 0, 1, 7, 20}));
}

TEST(FontChange, OpensOnTheFontChosenLast) {
    TextFont font{.name = "Arial", .points = 24, .style = 5, .color = 9};
    BeginFontChange(font, 1, "2");
    const FontPreset preset = PresetOf(font);
    EXPECT_EQ(preset.face, "Arial");
    EXPECT_EQ(preset.points, 24);
    EXPECT_EQ(preset.style, 5);
    EXPECT_EQ(font.color, 9);
}

TEST(FontChange, ReadsTheAngleEachTime) {
    TextFont font;
    BeginFontChange(font, 0, "30");
    EXPECT_EQ(font.angleTenths, 300);
    font.name = "Arial";
    BeginFontChange(font, 0, "-7.5");
    EXPECT_EQ(font.angleTenths, -75);
    BeginFontChange(font, 0, "steep");
    EXPECT_EQ(font.angleTenths, 0);
}

TEST(ChosenFont, IsKept) {
    TextFont font{.lastEnteredText = "kept", .angleTenths = 125};
    StoreChosenFont(font, Fancy());
    EXPECT_EQ(font, (TextFont{"kept", "Arial", 24, 15, 0x123456, 204, 125}));
}

TEST(ChosenFont, IsBoldFromAWeightOf700On) {
    TextFont font;
    StoreChosenFont(font, ChosenWith(699));
    EXPECT_EQ(font.style, 0);
    StoreChosenFont(font, ChosenWith(700));
    EXPECT_EQ(font.style, 1);
}

TEST(ChosenFont, HasItsPointsRoundedAndHalvesToTheEvenOne) {
    TextFont font;
    for (const auto& [tenths, points] : {std::pair{100, 10}, {99, 10}, {94, 9}, {105, 10}, {115, 12}, {4, 0}}) {
        FontResult result;
        result.tenthsOfPoints = tenths;
        StoreChosenFont(font, result);
        EXPECT_EQ(font.points, points);
    }
}

TEST(CancelledFont, IsEmptyButForTextAndAngle) {
    TextFont font;
    StoreChosenFont(font, Fancy());
    font.lastEnteredText = "kept";
    font.angleTenths = 125;
    StoreChosenFont(font, std::nullopt);
    EXPECT_EQ(font, (TextFont{"kept", "", 0, 0, 0, 0, 125}));
    EXPECT_EQ(SlantedFontOf(font), (SlantedFont{.face = "", .points = 0, .weight = 400, .escapement = 125}));
}

TEST(CancelledFont, BringsTheDefaultsBackAtTheNextChange) {
    TextFont font;
    StoreChosenFont(font, Fancy());
    StoreChosenFont(font, std::nullopt);
    BeginFontChange(font, 0, "0");
    EXPECT_EQ(PresetOf(font).face, "Microsoft Sans Serif");
    EXPECT_EQ(PresetOf(font).points, 10);
}

TEST(MadeFont, HasAllThatWasChosenAndTheAngle) {
    const TextFont font{.name = "Arial", .points = 24, .style = 15, .color = 9, .charset = 204, .angleTenths = 125};
    EXPECT_EQ(SlantedFontOf(font), (SlantedFont{"Arial", 24, 700, true, true, true, 204, 0, 125}));
}

TEST(MadeFont, HasEachStyleAlone) {
    const auto made = [](std::int32_t style) { return SlantedFontOf({.name = "Arial", .points = 9, .style = style}); };
    EXPECT_EQ(made(0), (SlantedFont{"Arial", 9, 400}));
    EXPECT_EQ(made(1), (SlantedFont{"Arial", 9, 700}));
    EXPECT_EQ(made(2), (SlantedFont{"Arial", 9, 400, true}));
    EXPECT_EQ(made(4), (SlantedFont{"Arial", 9, 400, false, true}));
    EXPECT_EQ(made(8), (SlantedFont{"Arial", 9, 400, false, false, true}));
}

} // namespace
