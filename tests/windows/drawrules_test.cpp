// What the lists, the buttons and the hand-over of the paint window do beyond drawing, in the running program.
#include "tests/windows/drawfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;

class DrawRules : public DrawTest {
  protected:
    static constexpr Rgb FilledGrey{196, 193, 196};

    // With the keyboard, which a list gets as by the tab key.
    static void ChooseWithKey(const DrawWindows& draw, int list, WORD key, int item) {
        Send(draw.window.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(draw.window.Item(list)), TRUE);
        EXPECT_TRUE(WaitFor([&] { return draw.window.FocusedId() == list; }));
        PressKey(key);
        EXPECT_TRUE(WaitFor([&] { return Send(draw.window.Item(list), CB_GETCURSEL) == item; }));
        Settle(draw);
    }

    static void SendCommand(const DrawWindows& draw, int id, int notification) {
        Send(draw.window.Window(), WM_COMMAND, MAKEWPARAM(id, notification),
             reinterpret_cast<LPARAM>(draw.window.Item(id)));
    }
};

// A list notifies each choice under several codes.
TEST_F(DrawRules, OneChoiceOfHollowIsOne) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    draw.window.Click(SquareBoxOption);
    ChooseWithKey(draw, PatternList, VK_UP, 0);
    Stroke(draw, {20, 20}, {80, 80});
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(20, 50) == tests::Black; }));
    EXPECT_EQ(draw.Seen().At(50, 50), White);
    ChooseWithKey(draw, PatternList, VK_DOWN, 1);
    Stroke(draw, {100, 20}, {160, 80});
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(100, 50) == tests::Black; }));
    EXPECT_EQ(draw.Seen().At(130, 50), FilledGrey);
    CloseAll(draw, opened);
}

TEST_F(DrawRules, ThinPenTakesATypeAgain) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const HWND types = draw.window.Item(PenTypeList);
    Choose(draw, PenWidthList, 1);
    EXPECT_FALSE(IsWindowEnabled(types));
    Choose(draw, PenWidthList, 0);
    EXPECT_TRUE(IsWindowEnabled(types));
    CloseAll(draw, opened);
}

TEST_F(DrawRules, DrawingThatCannotBeSavedCountsAsSaved) {
    WriteBytes(program_.Folder() / "out3.bmp", MakeBmp(40, 30, [](int, int) { return Green; }));
    const HANDLE held = CreateFileA(Path("out3.bmp").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    CloseDraw(draw, SaveButton);
    EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(100, 100)) == RGB(0, 255, 0); }));
    EXPECT_TRUE(opened.window.IsQuiet());
    CloseHandle(held);
    Close(opened);
}

TEST_F(DrawRules, HasAnIcon) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    EXPECT_NE(SeenWindow(draw.window).Ask(draw.window.Window(), WM_GETICON, ICON_BIG), 0u);
    CloseAll(draw, opened);
}

TEST_F(DrawRules, PressOnTheCanvasTakesTheKeyboard) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    EXPECT_NE(draw.window.FocusedId(), DrawCanvas);
    ClickAt(draw.On(100, 100));
    EXPECT_TRUE(WaitFor([&] { return draw.window.FocusedId() == DrawCanvas; }));
    CloseAll(draw, opened);
}

TEST_F(DrawRules, ButtonsActOnClicksAndAcceleratorsAlone) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    Stroke(draw, {20, 50}, {120, 50});
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(60, 50) == tests::Black; }));
    for (const int notification : {2, 3, BN_DBLCLK, BN_SETFOCUS, BN_KILLFOCUS}) {
        SendCommand(draw, ClearButton, notification);
    }
    EXPECT_EQ(draw.Seen().At(60, 50), tests::Black);
    SendCommand(draw, ClearButton, 1);
    EXPECT_TRUE(WaitFor([&] { return IsAllWhite(draw.Seen()); }));
    SendCommand(draw, SquareBoxOption, BN_DBLCLK); // the line stays the tool
    Stroke(draw, {20, 20}, {120, 120});
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(70, 70) == tests::Black; }));
    EXPECT_EQ(draw.Seen().At(20, 70), White);
    SendCommand(draw, QuitButton, BN_DBLCLK);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(draw.window.Window()) != FALSE; }));
    CloseAll(draw, opened);
}

TEST_F(DrawRules, NothingButAPressOfTheLeftButtonDraws) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const auto gesture = [&](UINT press, WPARAM held, UINT release) {
        Send(draw.canvas, press, held, MAKELPARAM(40, 40));
        Send(draw.canvas, WM_MOUSEMOVE, held, MAKELPARAM(140, 90));
        EXPECT_EQ(draw.Status(), "Pos: 140, 90") << press << ": something is dragged";
        Send(draw.canvas, release, 0, MAKELPARAM(140, 90));
    };
    gesture(WM_RBUTTONDOWN, MK_RBUTTON, WM_RBUTTONUP);
    gesture(WM_MBUTTONDOWN, MK_MBUTTON, WM_MBUTTONUP);
    gesture(WM_LBUTTONDBLCLK, MK_LBUTTON, WM_LBUTTONUP);
    Settle(draw);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsAllWhite(draw.Seen()); }));
    // The other button does not let go of what the left one drags.
    Press(draw, 40, 40);
    Send(draw.canvas, WM_RBUTTONUP, 0, MAKELPARAM(40, 40));
    Move(draw, 140, 40);
    Release(draw);
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(130, 40) == tests::Black; }));
    CloseAll(draw, opened);
}

TEST_F(DrawRules, FreeEditIsHiddenMeanwhile) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    EXPECT_FALSE(IsWindowVisible(opened.window.Window()));
    EXPECT_FALSE(IsWindowVisible(opened.canvas));
    CloseDraw(draw);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.canvas) != FALSE; }));
    Close(opened);
}

TEST_F(DrawRules, WhatWaitsInLineIsWorkedOffBeforeThePictureIsHandedOver) {
    const FreeEditWindows opened = Open();
    const HWND slider = opened.window.Item(RotationSlider);
    MoveMouse(MiddleOf(opened.window.Item(DrawLabel)));
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, DrawLabel) == RGB(87, 87, 87); }));
    Send(slider, TBM_SETPOS, TRUE, 90);
    program_.Suspend(); // so that one waits behind the other
    PostMessageA(opened.window.Window(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    PostMessageA(opened.window.Window(), WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), reinterpret_cast<LPARAM>(slider));
    program_.Resume();
    const DrawWindows draw = Opened(opened);
    const BmpView seen = draw.Seen();
    EXPECT_LT(seen.Width(), seen.Height()) << "the picture is not turned";
    CloseAll(draw, opened);
}

} // namespace
