// What the system's message boxes and its dialog for fonts are asked for.
#include "toolkit/fontdialog.h"
#include "toolkit/messageboxes.h"

#include "tests/toolkit/replacedimport.h"

#include <gtest/gtest.h>

#include <commdlg.h>

namespace {

using namespace lumbrix;
using namespace tests;

struct AskedMessage {
    HWND owner = nullptr;
    std::string text;
    std::string title;
    UINT style = 0;

    bool operator==(const AskedMessage&) const = default;
};

AskedMessage askedMessage;
int answerToMessage = IDOK;

int WINAPI AskWithMessage(HWND owner, const char* text, const char* title, UINT style) {
    askedMessage = {owner, text, title, style};
    return answerToMessage;
}

class AskedMessages : public testing::Test {
  protected:
    ReplacedImport box_{"MessageBoxA", AskWithMessage};
    MessageBoxes messages_;
};

TEST_F(AskedMessages, PlainOneHasNothingButItsButton) {
    messages_.Show("All is well.", "Lumbrix");
    EXPECT_EQ(askedMessage, (AskedMessage{nullptr, "All is well.", "Lumbrix", 0}));
}

TEST_F(AskedMessages, TechnicalOneComesToTheFrontAndHoldsTheTaskUp) {
    messages_.ShowTechnical("Error");
    EXPECT_EQ(askedMessage, (AskedMessage{nullptr, "Error", "", 0x12000}));
}

TEST_F(AskedMessages, QuestionIsForYesOrNoAndHasNoOtherMark) {
    answerToMessage = IDYES;
    EXPECT_TRUE(messages_.Confirm("Overwrite it?", "Please verify..."));
    EXPECT_EQ(askedMessage, (AskedMessage{nullptr, "Overwrite it?", "Please verify...", 4}));
    for (const int other : {IDNO, IDOK, IDCANCEL, 0}) {
        answerToMessage = other;
        EXPECT_FALSE(messages_.Confirm("Overwrite it?", "Please verify...")) << other;
    }
}

CHOOSEFONTA askedFont;
LOGFONTA askedDescription;
LOGFONTA chosenDescription;

BOOL WINAPI AskForFont(CHOOSEFONTA* dialog) {
    askedFont = *dialog;
    askedDescription = *dialog->lpLogFont;
    *dialog->lpLogFont = chosenDescription;
    dialog->iPointSize = 125;
    dialog->rgbColors = 0x030201;
    return TRUE;
}

class AskedFont : public testing::Test {
  protected:
    AskedFont() { chosenDescription = {}; }

    ReplacedImport dialog_{"ChooseFontA", AskForFont};
    HWND owner_ = reinterpret_cast<HWND>(0x1234);
};

TEST_F(AskedFont, BeginsWithNothingWithoutAPreset) {
    EXPECT_TRUE(ChooseFontOf(owner_, FontKinds::All));
    EXPECT_EQ(askedFont.hwndOwner, owner_);
    EXPECT_EQ(askedFont.Flags, 0x101u); // of the screen, with effects
    EXPECT_EQ(askedFont.rgbColors, 0u);
    EXPECT_EQ(std::string(askedDescription.lfFaceName), "");
    EXPECT_EQ(askedDescription.lfHeight, 0);
    EXPECT_EQ(askedDescription.lfWeight, 0);
}

TEST_F(AskedFont, MayHaveToBeScalableAndBeginWithAPreset) {
    const FontPreset preset{"Liberation Mono", 12, FontBold | FontStrikeout};
    EXPECT_TRUE(ChooseFontOf(owner_, FontKinds::Scalable, &preset));
    EXPECT_EQ(askedFont.Flags, 0x20141u);
    EXPECT_STREQ(askedDescription.lfFaceName, "Liberation Mono");
    EXPECT_EQ(askedDescription.lfHeight, -16); // at 96 dots per inch
    EXPECT_EQ(askedDescription.lfWeight, 700);
    EXPECT_EQ(askedDescription.lfItalic, 0);
    EXPECT_EQ(askedDescription.lfUnderline, 0);
    EXPECT_NE(askedDescription.lfStrikeOut, 0);
}

TEST_F(AskedFont, ComesBackWithAllThatWasChosen) {
    lstrcpyA(chosenDescription.lfFaceName, "Courier New");
    chosenDescription.lfHeight = -17;
    chosenDescription.lfWeight = 650;
    chosenDescription.lfItalic = 1;
    chosenDescription.lfStrikeOut = 3;
    chosenDescription.lfCharSet = 204;
    const std::optional<FontResult> chosen = ChooseFontOf(owner_, FontKinds::All);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->face, "Courier New");
    EXPECT_EQ(chosen->height, -17);
    EXPECT_EQ(chosen->tenthsOfPoints, 125);
    EXPECT_EQ(chosen->weight, 650);
    EXPECT_EQ(chosen->italic, 1);
    EXPECT_EQ(chosen->underline, 0);
    EXPECT_EQ(chosen->strikeout, 3);
    EXPECT_EQ(chosen->charset, 204);
    EXPECT_EQ(chosen->color, 0x030201u);
}

} // namespace
