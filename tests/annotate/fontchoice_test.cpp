// What the dialogs for the font and the colour of annotations are asked for, and what is kept of the answer.
#include "annotate/fontchoice.h"

#include "tests/toolkit/dialogs.h"
#include "tests/toolkit/replacedimport.h"

#include <gtest/gtest.h>

#include <commdlg.h>

namespace {

using namespace lumbrix;
using namespace tests;

CHOOSEFONTA askedAnnotationFont;
LOGFONTA chosenAnnotationFont;
COLORREF chosenAnnotationColor;
BOOL isFontAccepted;

BOOL WINAPI AskForAnnotationFont(CHOOSEFONTA* dialog) {
    askedAnnotationFont = *dialog;
    *dialog->lpLogFont = chosenAnnotationFont;
    dialog->rgbColors = chosenAnnotationColor;
    return isFontAccepted;
}

CHOOSECOLORA askedColor;
std::vector<COLORREF> askedCustomColors;

BOOL WINAPI AskForColor(CHOOSECOLORA* dialog) {
    askedColor = *dialog;
    askedCustomColors.assign(dialog->lpCustColors, dialog->lpCustColors + 16);
    return TRUE;
}

OwnedLayout EmptyWindow() {
    OwnedLayout layout;
    layout.width = 50;
    layout.height = 20;
    layout.style = FixedDialog;
    return layout;
}

class FontChoice : public testing::Test {
  protected:
    FontChoice() {
        EXPECT_TRUE(window_.OpenModeless(nullptr));
        chosenAnnotationFont = {};
        lstrcpyA(chosenAnnotationFont.lfFaceName, "Courier New");
        chosenAnnotationFont.lfHeight = -20;
        chosenAnnotationFont.lfWeight = 600;
        chosenAnnotationColor = 0x030201;
        isFontAccepted = TRUE;
    }

    TextStyle Choose() {
        TextStyle style;
        ChooseAnnotationFont(window_, style);
        return style;
    }

    TestDialog window_{EmptyWindow()};
    ReplacedImport fonts_{"ChooseFontA", AskForAnnotationFont};
};

TEST_F(FontChoice, IsAskedForByTheWindowWithEffects) {
    Choose();
    EXPECT_EQ(askedAnnotationFont.hwndOwner, window_.Handle());
    EXPECT_EQ(askedAnnotationFont.Flags, 0x101u);
}

TEST_F(FontChoice, HeightWithoutItsSignIsTakenForDialogUnits) {
    const LONG pixels = window_.InPixels({0, 0, 0, 20}).bottom;
    EXPECT_GT(pixels, 20);
    EXPECT_EQ(Choose().fontSize, pixels);
    chosenAnnotationFont.lfHeight = 20;
    EXPECT_EQ(Choose().fontSize, pixels);
}

TEST_F(FontChoice, EachStyleIsKeptForItself) {
    TextStyle style = Choose();
    EXPECT_EQ(style.fontName, "Courier New");
    EXPECT_EQ(style.bold, 1);
    EXPECT_EQ(style.italic + style.underline + style.strikeout, 0);
    chosenAnnotationFont.lfWeight = 599;
    chosenAnnotationFont.lfItalic = 1;
    style = Choose();
    EXPECT_EQ(style.bold, 0);
    EXPECT_EQ(style.italic, 1);
    EXPECT_EQ(style.underline + style.strikeout, 0);
    chosenAnnotationFont.lfItalic = 0;
    chosenAnnotationFont.lfUnderline = 1;
    style = Choose();
    EXPECT_EQ(style.underline, 1);
    EXPECT_EQ(style.italic + style.strikeout, 0);
    chosenAnnotationFont.lfUnderline = 0;
    chosenAnnotationFont.lfStrikeOut = 1;
    style = Choose();
    EXPECT_EQ(style.strikeout, 1);
    EXPECT_EQ(style.italic + style.underline, 0);
}

TEST_F(FontChoice, ColorIsTakenApart) {
    const TextStyle style = Choose();
    EXPECT_EQ(style.red, 1);
    EXPECT_EQ(style.green, 2);
    EXPECT_EQ(style.blue, 3);
}

TEST_F(FontChoice, NamelessFontIsArial) {
    chosenAnnotationFont.lfFaceName[0] = '\0';
    EXPECT_EQ(Choose().fontName, "Arial");
}

TEST_F(FontChoice, CancelledOneKeepsEverything) {
    isFontAccepted = FALSE;
    TextStyle style{"Times", 33, 1, 0, 1, 0, 7, 8, 9};
    ChooseAnnotationFont(window_, style);
    EXPECT_EQ(style.fontName, "Times");
    EXPECT_EQ(style.fontSize, 33);
    EXPECT_EQ(style.bold, 1);
    EXPECT_EQ(style.red, 7);
}

TEST_F(FontChoice, ColorDialogBeginsWithBlackAndSixteenEmptyColors) {
    const ReplacedImport colors("ChooseColorA", AskForColor);
    ChooseUnusedColor(window_);
    EXPECT_EQ(askedColor.hwndOwner, window_.Handle());
    EXPECT_EQ(askedColor.Flags, 1u);
    EXPECT_EQ(askedColor.rgbResult, 0u);
    EXPECT_EQ(askedCustomColors, std::vector<COLORREF>(16, 0));
}

} // namespace
