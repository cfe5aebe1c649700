// The skew dialog of the running program.
#include "freeedit/skewlayout.h"
#include "tests/windows/expected/skewdialog.h"
#include "tests/windows/freeeditfixture.h"

namespace {

using namespace lumbrix;
using namespace lumbrix::skewdialog;
using namespace tests;

class Skew : public FreeEditTest {
  protected:
    OpenWindow OpenSkew(const FreeEditWindows& opened) const {
        PressLabel(opened, SkewLabel);
        return opened.window.Further();
    }

    void Press(const FreeEditWindows& opened, const OpenWindow& dialog, int button) const {
        dialog.BeginClick(button);
        dialog.WaitUntilGone();
        Settle(opened);
    }

    static std::vector<std::string> Texts(const OpenWindow& dialog) {
        std::vector<std::string> texts;
        for (const int id : {1004, 1005, 1009, 1010, 1017, 1016}) {
            texts.push_back(dialog.Text(id));
        }
        return texts;
    }
};

TEST_F(Skew, DialogIsAsExpected) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    ExpectedWindow expected = ExpectedSkewDialog();
    for (ExpectedControl& control : expected.controls) {
        if (control.kind == ExpectedKind::DigitsBox) {
            control.caption = dialog.Text(control.id);
        }
    }
    SeenWindow(dialog).Expect(expected);
    EXPECT_EQ(Texts(dialog), (std::vector<std::string>{"0", "0", "426", "0", "0", "320"}));
    EXPECT_FALSE(IsWindowEnabled(opened.window.Window()));
    Press(opened, dialog, AbortButton);
    Close(opened);
}

TEST_F(Skew, SetMovesTheCorners) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    dialog.SetText(TopLeftXBox, "100");
    dialog.SetText(TopLeftYBox, "20");
    dialog.SetText(TopRightXBox, "500");
    dialog.SetText(TopRightYBox, "60");
    dialog.SetText(BottomLeftXBox, "30");
    dialog.SetText(BottomLeftYBox, "320");
    Press(opened, dialog, SetButton);
    ExpectShown(opened, {{{100, 20}, {500, 60}, {30, 320}}});
    const OpenWindow again = OpenSkew(opened);
    EXPECT_EQ(Texts(again), (std::vector<std::string>{"100", "20", "500", "60", "30", "320"}));
    Press(opened, again, AbortButton);
    Close(opened);
}

TEST_F(Skew, AbortLeavesTheCorners) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    dialog.SetText(TopLeftXBox, "100");
    Press(opened, dialog, AbortButton);
    ExpectShown(opened, {{{0, 0}, {UnitsWidth, 0}, {0, UnitsHeight}}});
    const OpenWindow again = OpenSkew(opened);
    EXPECT_EQ(again.Text(TopLeftXBox), "0");
    Press(opened, again, AbortButton);
    Close(opened);
}

TEST_F(Skew, EmptyBoxesCountAsZero) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    dialog.SetText(TopRightXBox, "");
    Press(opened, dialog, SetButton);
    ExpectWhite(opened); // of no width
    Close(opened);
}

TEST_F(Skew, CornersAreStretchedTurnedAndPannedLikeBefore) {
    const FreeEditWindows opened = Open();
    SetSlider(opened, StretchSlider, 200);
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, 10);
    const OpenWindow dialog = OpenSkew(opened);
    dialog.SetText(TopLeftXBox, "50");
    dialog.SetText(TopLeftYBox, "5");
    Press(opened, dialog, SetButton);
    ExpectShown(opened, {{{110, 10}, {862, 0}, {10, 640}}});
    Close(opened);
}

TEST_F(Skew, BoxesTakeDigitsOnly) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    dialog.Activate();
    EXPECT_EQ(dialog.FocusedId(), TopLeftXBox); // its text is selected, so typing replaces it
    for (const WORD key : {WORD{VK_OEM_MINUS}, WORD{'1'}, WORD{'A'}, WORD{VK_OEM_PERIOD}, WORD{'2'}}) {
        PressKey(key);
    }
    EXPECT_TRUE(WaitFor([&] { return dialog.Text(TopLeftXBox) == "12"; }));
    Press(opened, dialog, AbortButton);
    Close(opened);
}

TEST_F(Skew, OnlyItsTwoButtonsEndIt) {
    const FreeEditWindows opened = Open();
    const OpenWindow dialog = OpenSkew(opened);
    Send(dialog.Window(), WM_CLOSE);
    Send(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
    Send(dialog.Window(), WM_COMMAND, IDOK, 0);
    Send(dialog.Window(), WM_COMMAND, MAKEWPARAM(SetButton, BN_DBLCLK), 0);
    Send(dialog.Window(), WM_COMMAND, MAKEWPARAM(AbortButton, BN_SETFOCUS), 0);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(dialog.Window()) != 0; }));
    PostMessageA(dialog.Window(), WM_COMMAND, MAKEWPARAM(SetButton, 1), 0); // by an accelerator
    dialog.WaitUntilGone();
    const OpenWindow second = OpenSkew(opened);
    PostMessageA(second.Window(), WM_COMMAND, MAKEWPARAM(AbortButton, 1), 0);
    second.WaitUntilGone();
    Close(opened);
}

TEST_F(Skew, CornersStartAnewAtTheNextOpening) {
    const FreeEditWindows first = Open();
    const OpenWindow dialog = OpenSkew(first);
    dialog.SetText(TopLeftXBox, "100");
    Press(first, dialog, SetButton);
    Close(first);
    const FreeEditWindows second = Open();
    const OpenWindow again = OpenSkew(second);
    EXPECT_EQ(Texts(again), (std::vector<std::string>{"0", "0", "426", "0", "0", "320"}));
    Press(second, again, AbortButton);
    Close(second);
}

} // namespace
