// The Free Edit window of the running program: how it opens, what it looks like, its labels, and its end.
#include "tests/windows/expected/transformwindow.h"
#include "tests/windows/freeeditfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;

using FreeEditWindow = FreeEditTest;

SIZE UnitsOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const ExpectedPlace many = SeenWindow::InPixels({0, 0, 1024, 1024});
    return {client.right * 1024 / many.width, client.bottom * 1024 / many.height};
}

// With the places that a size of the window gives, and what is hidden by then.
ExpectedWindow ExpectedInSize(SIZE units) {
    ExpectedWindow expected = ExpectedTransformWindow();
    const int width = units.cx;
    const int height = units.cy;
    for (ExpectedControl& control : expected.controls) {
        switch (control.id) {
        case 1002:
            control.place = {width - 305, height - 20, 100, 20};
            break;
        case 1003:
            control.place = {width - 305, height - 30, 90, 10};
            break;
        case 1004:
            control.place = {width - 195, height - 30, 90, 10};
            control.caption = "Stretch: 1.00";
            break;
        case 1005:
            control.place = {width - 195, height - 20, 100, 20};
            break;
        case 1006:
            control.place = {0, height - 30, width, 30};
            control.isHidden = true;
            break;
        case 1007:
            control.place = {width - 85, height - 25, 65, 20};
            break;
        case 1011:
            control.place = {width - 360, height - 23, 35, 16};
            break;
        case 1020:
            control.place = {width - 395, height - 23, 35, 16};
            break;
        default:
            control.isHidden = true;
            break;
        }
    }
    return expected;
}

TEST_F(FreeEditWindow, IsAsExpectedInTheSizeOfTheScreen) {
    const FreeEditWindows opened = Open();
    SeenWindow(opened.window).Expect(ExpectedInSize(UnitsOf(opened.window.Window())));
    EXPECT_EQ(opened.window.Text(PathBox), Path("picture.bmp"));
    EXPECT_EQ(GetWindow(opened.window.Window(), GW_OWNER), program_.Window());
    EXPECT_FALSE(IsWindowEnabled(program_.Window()));
    Close(opened);
}

// Its picture is loaded before it is shown then, and a modal window is shown in its normal size.
TEST_F(FreeEditWindow, IsMaximizedAlsoWhereMuchIsToBeWorkedOffAtFirst) {
    program_.SetText(SourceFileBox, Path("picture.bmp"));
    program_.BeginClick(FreeEditButton);
    const DWORD thread = GetWindowThreadProcessId(program_.Window(), nullptr);
    constexpr ULONGLONG LongerThanTheTimer = 500;
    for (const ULONGLONG end = GetTickCount64() + LongerThanTheTimer; GetTickCount64() < end;) {
        PostThreadMessageA(thread, WM_NULL, 0, 0);
    }
    const FreeEditWindows opened = Opened();
    EXPECT_TRUE(WaitFor([&] { return ShowsPicture(opened); }));
    EXPECT_TRUE(IsZoomed(opened.window.Window()));
    Close(opened);
}

TEST_F(FreeEditWindow, LaysItsBarOutAnewInAnotherSize) {
    const FreeEditWindows opened = Open();
    Send(opened.window.Window(), WM_SYSCOMMAND, SC_RESTORE, 0);
    Settle(opened);
    MoveWindow(opened.window.Window(), 200, 300, 700, 500, TRUE);
    Settle(opened);
    ExpectedWindow expected = ExpectedInSize(UnitsOf(opened.window.Window()));
    expected.position = ExpectedPosition::Anywhere;
    SeenWindow(opened.window).Expect(expected);
    for (const int label : {SaveLabel, SkewLabel, DrawLabel}) {
        EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, label) == RGB(128, 128, 128); })) << "is not painted";
    }
    Close(opened);
}

TEST_F(FreeEditWindow, CanvasTakesTheRestAndFollowsTheWindow) {
    const FreeEditWindows opened = Open();
    const auto expectInPlace = [&] {
        const SIZE units = UnitsOf(opened.window.Window());
        const ExpectedPlace size =
            SeenWindow::InPixels({0, 0, static_cast<int>(units.cx), static_cast<int>(units.cy) - 30});
        const POINT corner = ScreenPointOf(opened.window.Window(), {0, 0});
        RECT canvas{};
        GetWindowRect(opened.canvas, &canvas);
        EXPECT_EQ(canvas.left, corner.x);
        EXPECT_EQ(canvas.top, corner.y);
        EXPECT_EQ(canvas.right - canvas.left, size.width);
        EXPECT_EQ(canvas.bottom - canvas.top, size.height);
    };
    expectInPlace();
    Send(opened.window.Window(), WM_SYSCOMMAND, SC_RESTORE, 0);
    Settle(opened);
    expectInPlace();
    RECT frame{};
    GetWindowRect(opened.window.Window(), &frame);
    MoveWindow(opened.window.Window(), frame.left + 40, frame.top - 30, frame.right - frame.left,
               frame.bottom - frame.top, TRUE);
    Settle(opened);
    expectInPlace();
    EXPECT_TRUE(WaitFor([&] { return ShowsPicture(opened); }));
    Close(opened);
}

TEST_F(FreeEditWindow, CanvasIsAPopupWithTwoScrollBars) {
    const FreeEditWindows opened = Open();
    const auto style = static_cast<DWORD>(GetWindowLongA(opened.canvas, GWL_STYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_CHILD), WS_POPUP | WS_VISIBLE);
    for (const int bar : {SB_VERT, SB_HORZ}) {
        const SCROLLINFO info = ScrollBarOf(opened, bar);
        EXPECT_EQ(info.nMin, -1000);
        EXPECT_EQ(info.nMax, 1000);
        EXPECT_EQ(info.nPage, 50u);
        EXPECT_EQ(info.nPos, 0);
    }
    EXPECT_EQ(style & (WS_VSCROLL | WS_HSCROLL), static_cast<DWORD>(WS_VSCROLL | WS_HSCROLL));
    Close(opened);
}

TEST_F(FreeEditWindow, SlidersHaveTheirRangesAndPositions) {
    const FreeEditWindows opened = Open();
    const HWND stretch = opened.window.Item(StretchSlider);
    EXPECT_EQ(Send(stretch, TBM_GETRANGEMIN), 0);
    EXPECT_EQ(Send(stretch, TBM_GETRANGEMAX), 500);
    EXPECT_EQ(Send(stretch, TBM_GETPOS), 100);
    EXPECT_EQ(Send(stretch, TBM_GETPAGESIZE), 1);
    const HWND rotation = opened.window.Item(RotationSlider);
    EXPECT_EQ(Send(rotation, TBM_GETRANGEMIN), -180);
    EXPECT_EQ(Send(rotation, TBM_GETRANGEMAX), 180);
    EXPECT_EQ(Send(rotation, TBM_GETPOS), 0);
    EXPECT_EQ(Send(rotation, TBM_GETPAGESIZE), 1);
    Close(opened);
}

TEST_F(FreeEditWindow, DoesNotOpenWithoutASource) {
    program_.BeginClick(FreeEditButton);
    Send(program_.Window(), WM_NULL);
    EXPECT_TRUE(WaitUntilLasting([&] { return program_.IsQuiet(); }));
    EXPECT_TRUE(IsWindowEnabled(program_.Window()));
}

TEST_F(FreeEditWindow, AnyNotificationOfItsButtonOpensIt) {
    program_.SetText(SourceFileBox, Path("picture.bmp"));
    PostMessageA(program_.Window(), WM_COMMAND, MAKEWPARAM(FreeEditButton, BN_SETFOCUS), 0);
    const OpenWindow window(WaitForTop([](HWND top) { return WindowText(top) == "Change your image"; }));
    window.Close();
    window.WaitUntilGone();
    WaitForTheEnd();
}

TEST_F(FreeEditWindow, UnreadablePictureLeavesTheCanvasWhite) {
    WriteBytes(program_.Folder() / "broken.jpg", "no picture");
    for (const char* name : {"broken.jpg", "none.png"}) {
        const FreeEditWindows opened = BeginOpen(Path(name), Path("out.png"));
        opened.window.Activate();
        EXPECT_TRUE(WaitUntilLasting([&] { return IsAllWhite(opened.SeenCanvas()); })) << name;
        SetSlider(opened, RotationSlider, 30);
        ExpectWhite(opened);
        Close(opened);
    }
}

TEST_F(FreeEditWindow, LabelUnderTheMouseIsLit) {
    const FreeEditWindows opened = Open();
    for (const int label : {SaveLabel, SkewLabel, DrawLabel}) {
        MoveMouse(MiddleOf(opened.window.Item(label)));
        EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, label) == RGB(87, 87, 87); })) << label;
        for (const int other : {SaveLabel, SkewLabel, DrawLabel}) {
            EXPECT_TRUE(other == label || BackgroundOf(opened, other) == RGB(128, 128, 128)) << other;
        }
    }
    RECT client{};
    GetClientRect(opened.window.Window(), &client);
    MoveMouse(ScreenPointOf(opened.window.Window(), {20, client.bottom - 10}));
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, DrawLabel) == RGB(128, 128, 128); }));
    Close(opened);
}

// Red while it is lit, white otherwise; seen as the most saturated and the lightest of its pixels.
TEST_F(FreeEditWindow, LitLabelHasRedText) {
    const FreeEditWindows opened = Open();
    const auto counts = [&](int label) {
        const BmpView seen(ScreenBitmapOf(opened.window.Item(label)));
        int red = 0, white = 0;
        for (int y = 2; y < seen.Height() - 2; ++y) {
            for (int x = 2; x < seen.Width() - 2; ++x) {
                red += seen.At(x, y) == Rgb{255, 0, 0} ? 1 : 0;
                white += seen.At(x, y) == White ? 1 : 0;
            }
        }
        return std::pair(red, white);
    };
    EXPECT_EQ(counts(SkewLabel).first, 0);
    EXPECT_GT(counts(SkewLabel).second, 10);
    MoveMouse(MiddleOf(opened.window.Item(SkewLabel)));
    EXPECT_TRUE(WaitFor([&] { return counts(SkewLabel).first > 10; }));
    EXPECT_EQ(counts(SkewLabel).second, 0);
    Close(opened);
}

TEST_F(FreeEditWindow, PressActsOnWhatWasHoveredLastWhereverItIs) {
    const FreeEditWindows opened = Open();
    const auto clientPoint = [&](POINT screen) {
        ScreenToClient(opened.window.Window(), &screen);
        return MAKELPARAM(screen.x, screen.y);
    };
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, clientPoint(MiddleOf(opened.window.Item(SaveLabel))));
    Send(opened.window.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_TRUE(Exists("out.png"));
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, SaveLabel) == RGB(128, 128, 128); }));
    Close(opened);
}

TEST_F(FreeEditWindow, PressBesideTheLabelsDoesNothingButPutsThemOut) {
    const FreeEditWindows opened = Open();
    const LPARAM bar = MAKELPARAM(5, 700);
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, bar);
    Send(opened.window.Window(), WM_LBUTTONDOWN, MK_LBUTTON, bar);
    EXPECT_TRUE(opened.window.IsQuiet());
    EXPECT_FALSE(Exists("out.png"));
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, SaveLabel) == RGB(128, 128, 128); }));
    EXPECT_EQ(opened.window.Text(RotationLabel), "Rotation: 0");
    Close(opened);
}

TEST_F(FreeEditWindow, NothingButAPressOfTheLeftButtonActs) {
    const FreeEditWindows opened = Open();
    POINT save = MiddleOf(opened.window.Item(SaveLabel));
    ScreenToClient(opened.window.Window(), &save);
    const LPARAM place = MAKELPARAM(save.x, save.y);
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, place);
    for (const UINT message : {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, WM_MBUTTONDOWN, WM_MBUTTONUP,
                               WM_LBUTTONUP, WM_LBUTTONDBLCLK}) {
        Send(opened.window.Window(), message, 0, place);
        EXPECT_FALSE(Exists("out.png")) << message;
    }
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, SaveLabel) == RGB(87, 87, 87); })) << "is put out";
    Send(opened.window.Window(), WM_LBUTTONDOWN, MK_LBUTTON, place);
    EXPECT_TRUE(Exists("out.png"));
    Close(opened);
}

// The coordinates have no sign, so a place left of the window is not one near its right border.
TEST_F(FreeEditWindow, MouseOutsideTheWindowKeepsWhatWasHovered) {
    const FreeEditWindows opened = Open();
    POINT save = MiddleOf(opened.window.Item(SaveLabel));
    ScreenToClient(opened.window.Window(), &save);
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, MAKELPARAM(save.x, save.y));
    EXPECT_TRUE(WaitFor([&] { return BackgroundOf(opened, SaveLabel) == RGB(87, 87, 87); }));
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, MAKELPARAM(-1, -1));
    EXPECT_TRUE(WaitUntilLasting([&] { return BackgroundOf(opened, SaveLabel) == RGB(87, 87, 87); }));
    Close(opened);
}

TEST_F(FreeEditWindow, NothingSurvivesItsEnd) {
    const FreeEditWindows first = Open();
    SetSlider(first, RotationSlider, 20);
    SetSlider(first, StretchSlider, 50);
    Scroll(first, WM_VSCROLL, SB_PAGEDOWN);
    Close(first);
    EXPECT_FALSE(IsWindow(first.canvas));

    const FreeEditWindows second = Open();
    EXPECT_EQ(second.window.Text(RotationLabel), "Rotation: 0");
    EXPECT_EQ(second.window.Text(StretchLabel), "Stretch: 1.00");
    ExpectShown(second, {{{0, 0}, {UnitsWidth, 0}, {0, UnitsHeight}}});
    Close(second);
}

TEST_F(FreeEditWindow, SourceIsHeldWhileItIsShownAndFreeAfterwards) {
    const FreeEditWindows opened = Open();
    EXPECT_FALSE(DeleteFileA(Path("picture.bmp").c_str()));
    Close(opened);
    EXPECT_TRUE(DeleteFileA(Path("picture.bmp").c_str()));
}

TEST_F(FreeEditWindow, ClosingTheCanvasClosesTheWindow) {
    const FreeEditWindows opened = Open();
    PostMessageA(opened.canvas, WM_SYSCOMMAND, SC_CLOSE, 0);
    opened.window.WaitUntilGone();
    WaitForTheEnd();
}

TEST_F(FreeEditWindow, CanvasLiesAboveItsOwnerWhicheverIsUsed) {
    const FreeEditWindows opened = Open();
    RECT client{};
    GetClientRect(opened.window.Window(), &client);
    ClickAt(opened.OnCanvas(300, 150));
    EXPECT_TRUE(ShowsPicture(opened));
    ClickAt(ScreenPointOf(opened.window.Window(), {20, client.bottom - 10}));
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == opened.window.Window(); }));
    Settle(opened);
    EXPECT_TRUE(WaitUntilLasting([&] { return ShowsPicture(opened); }));
    Close(opened);
}

// What gets the keyboard comes to the front under Wine, and the canvas not with it.
TEST_F(FreeEditWindow, CanvasLiesAboveItsOwnerThatIsPlacedAnew) {
    const FreeEditWindows opened = Open();
    Send(opened.window.Window(), WM_SYSCOMMAND, SC_RESTORE, 0);
    const auto pathBox = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(opened.window.Item(PathBox)));
    opened.window.CallInside("user32.dll", "SetFocus", {pathBox}); // of which nobody is told
    SetWindowPos(opened.window.Window(), nullptr, 20, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(WaitUntilLasting([&] { return ShowsPicture(opened); }));
    Close(opened);
}

// Numbered files beside the target are nobody's then, for the window that knew the target is forgotten.
TEST_F(FreeEditWindow, NumberedFilesStayOnceItWasOpen) {
    WriteBytes(program_.Folder() / "out1.bmp", "mine");
    WriteBytes(program_.Folder() / "1.bmp", "in the current folder");
    Close(Open());
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("1.bmp"));
    WriteBytes(program_.Folder() / "2.bmp", "in the current folder");
    EXPECT_EQ(program_.Close(), 0u);
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("2.bmp"));
}

TEST_F(FreeEditWindow, CounterOfAnOpeningIsForgottenAtItsEnd) {
    WriteBytes(program_.Folder() / "4.bmp", "in the current folder");
    Close(Open());
    EXPECT_TRUE(Exists("4.bmp"));
}

TEST(FreeEditWithoutASession, SaysSoAndEnds) {
    const TemporaryFolder folder;
    const std::filesystem::path artifacts = LUMBRIX_ARTIFACTS;
    for (const char* name : {"lumbrix.exe", "lumbrix.dll"}) {
        std::filesystem::copy_file(artifacts / name, folder / name);
    }
    std::filesystem::copy_file(REFUSING_MODULE, folder / "gdiplus.dll");
    RunningProgram program(folder.Path(), folder.Path());
    program.SetText(SourceFileBox, "a.png");
    program.BeginClick(FreeEditButton);
    EXPECT_EQ(program.Answer(), ": Error initializing GDI+");
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program.Window()) != 0; }));
    EXPECT_TRUE(program.IsQuiet());
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FreeEditWindow, HiddenButtonActsOnClicksAndAcceleratorsAlone) {
    const FreeEditWindows opened = Open();
    for (const int notification : {2, 3, BN_DBLCLK, BN_SETFOCUS, BN_KILLFOCUS}) {
        Send(opened.window.Window(), WM_COMMAND, MAKEWPARAM(SelectButton, notification));
    }
    EXPECT_TRUE(opened.window.IsQuiet());
    PostMessageA(opened.window.Window(), WM_COMMAND, MAKEWPARAM(SelectButton, 1), 0);
    const OpenWindow picker = opened.window.Further();
    EXPECT_EQ(WindowText(picker.Window()), "Select the image");
    PostMessageA(picker.Item(IDCANCEL), BM_CLICK, 0, 0);
    picker.WaitUntilGone();
    Close(opened);
}

} // namespace
