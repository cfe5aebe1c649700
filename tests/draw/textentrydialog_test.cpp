// Changing the font in the window for entering text, with a dialog for fonts that the test answers itself.
#include "draw/textentry.h"

#include "draw/textentrylayout.h"
#include "tests/toolkit/answering.h"
#include "tests/toolkit/replacedimport.h"

#include <gtest/gtest.h>

#include <commdlg.h>

namespace {

using namespace lumbrix;
using namespace tests;

CHOOSEFONTA askedTextFont;
LOGFONTA askedTextDescription;
BOOL isTextFontAccepted = TRUE;

BOOL WINAPI AskForTextFont(CHOOSEFONTA* dialog) {
    askedTextFont = *dialog;
    askedTextDescription = *dialog->lpLogFont;
    lstrcpyA(dialog->lpLogFont->lfFaceName, "Liberation Mono");
    dialog->lpLogFont->lfWeight = 700;
    dialog->lpLogFont->lfCharSet = 204;
    dialog->iPointSize = 235;
    dialog->rgbColors = 0x030201;
    return isTextFontAccepted;
}

class TextEntryDialog : public testing::Test {
  protected:
    // Opens the window, puts texts into its boxes, changes the font and presses a button.
    void ChangeFont(const char* text, const char* angle, int button) {
        const Answering answering([&](HWND window) {
            SetDlgItemTextA(window, textentry::TextBox, text);
            SetDlgItemTextA(window, textentry::AngleBox, angle);
            SendDlgItemMessageA(window, textentry::ChangeFontButton, BM_CLICK, 0, 0);
            SendDlgItemMessageA(window, button, BM_CLICK, 0, 0);
        });
        ShowTextEntry(
            nullptr, font_, FillColor,
            [this](OwnedFont made) {
                ++fontsSet_;
                GetObjectA(made.Get(), sizeof set_, &set_);
            },
            entered_);
    }

    static constexpr FillValue FillColor = 0x00FF00;

    ReplacedImport dialog_{"ChooseFontA", AskForTextFont};
    TextFont font_;
    std::string entered_ = "before";
    LOGFONTA set_{};
    int fontsSet_ = 0;
};

TEST_F(TextEntryDialog, AsksForScalableFontsFromTheDefaultOn) {
    ChangeFont("", "0", textentry::AbortButton);
    EXPECT_EQ(askedTextFont.Flags, 0x20141u);
    EXPECT_STREQ(askedTextDescription.lfFaceName, "Microsoft Sans Serif");
    EXPECT_EQ(askedTextDescription.lfHeight, -13); // ten points at 96 dots per inch
    EXPECT_EQ(askedTextDescription.lfWeight, 400);
}

TEST_F(TextEntryDialog, HandsTheChosenFontOnWithItsAngle) {
    ChangeFont("kept", "12.5", textentry::AbortButton);
    EXPECT_EQ(fontsSet_, 1);
    EXPECT_STREQ(set_.lfFaceName, "Liberation Mono");
    EXPECT_EQ(set_.lfHeight, -32); // 24 points, for half a point goes to the even one
    EXPECT_EQ(set_.lfWeight, 700);
    EXPECT_EQ(set_.lfCharSet, 204);
    EXPECT_EQ(set_.lfEscapement, 125);
    EXPECT_EQ(font_.lastEnteredText, "kept");
    EXPECT_EQ(font_.angleTenths, 125);
    EXPECT_EQ(font_.points, 24);
    EXPECT_EQ(font_.color, 0x030201);
    EXPECT_EQ(entered_, "before");
}

TEST_F(TextEntryDialog, NextDialogBeginsWithWhatWasChosen) {
    ChangeFont("", "0", textentry::AbortButton);
    ChangeFont("", "0", textentry::AbortButton);
    EXPECT_STREQ(askedTextDescription.lfFaceName, "Liberation Mono");
    EXPECT_EQ(askedTextDescription.lfWeight, 700);
}

TEST_F(TextEntryDialog, CancelledDialogLeavesNoFontAndIsHandedOnAllTheSame) {
    isTextFontAccepted = FALSE;
    ChangeFont("new", "30", textentry::ExitButton);
    isTextFontAccepted = TRUE;
    EXPECT_EQ(fontsSet_, 1);
    EXPECT_EQ(font_.name, "");
    EXPECT_EQ(font_.points, 0);
    EXPECT_EQ(font_.angleTenths, 300);
    EXPECT_EQ(entered_, "new");
}

} // namespace
