// The system's dialog for fonts, answered from within.
#include "toolkit/fontdialog.h"

#include "tests/toolkit/answering.h"

#include <gtest/gtest.h>

#include <dlgs.h>

namespace {

using namespace lumbrix;
using namespace tests;

std::string BoxText(HWND dialog, int id) {
    char text[64] = "";
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

bool IsBoxChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }

void Press(HWND dialog, int button) { SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); }

const FontPreset Preset{"Liberation Sans", 20, FontItalic | FontUnderline};

TEST(FontDialog, OpensOnThePreset) {
    std::string size;
    bool isUnderlined = false;
    bool isStruckOut = true;
    const Answering answering([&](HWND dialog) {
        size = BoxText(dialog, cmb3);
        isUnderlined = IsBoxChecked(dialog, chx2);
        isStruckOut = IsBoxChecked(dialog, chx1);
        Press(dialog, IDCANCEL);
    });
    EXPECT_FALSE(ChooseFontOf(nullptr, FontKinds::Scalable, &Preset));
    EXPECT_EQ(size, "20");
    EXPECT_TRUE(isUnderlined);
    EXPECT_FALSE(isStruckOut);
}

TEST(FontDialog, GivesBackWhatIsChosen) {
    const Answering answering([](HWND dialog) { Press(dialog, IDOK); });
    const std::optional<FontResult> chosen = ChooseFontOf(nullptr, FontKinds::Scalable, &Preset);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->face, "Liberation Sans");
    EXPECT_EQ(chosen->tenthsOfPoints, 200);
    EXPECT_EQ(StyleOf(*chosen), FontItalic | FontUnderline);
    EXPECT_LT(chosen->weight, 700);
    EXPECT_LT(chosen->height, 0);
    EXPECT_EQ(chosen->color, 0u);
}

TEST(FontDialog, BoldPresetIsBold) {
    const FontPreset bold{"Liberation Sans", 10, FontBold | FontStrikeout};
    const Answering answering([](HWND dialog) { Press(dialog, IDOK); });
    const std::optional<FontResult> chosen = ChooseFontOf(nullptr, FontKinds::All, &bold);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(StyleOf(*chosen), FontBold | FontStrikeout);
    EXPECT_EQ(chosen->tenthsOfPoints, 100);
}

TEST(FontDialog, ColorAndLinesAreOfferedWithoutAPresetToo) {
    const Answering answering([](HWND dialog) {
        CheckDlgButton(dialog, chx1, BST_CHECKED);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(chx1, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, chx1)));
        SendDlgItemMessageA(dialog, cmb4, CB_SETCURSEL, 9, 0); // red of the sixteen colours
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(cmb4, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, cmb4)));
        Press(dialog, IDOK);
    });
    const std::optional<FontResult> chosen = ChooseFontOf(nullptr, FontKinds::All);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->color, 0x0000FFu);
    EXPECT_NE(chosen->strikeout, 0);
}

} // namespace
