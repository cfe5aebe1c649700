// The picture on the canvas of the running program: turned, stretched, panned and saved.
#include "tests/windows/freeeditfixture.h"

#include <atomic>
#include <thread>

namespace {

using namespace lumbrix;
using namespace tests;

using FreeEditPicture = FreeEditTest;

CornerPoints Panned(CornerPoints points, int x, int y) {
    for (PixelPoint& point : points) {
        point = {point.x + x, point.y + y};
    }
    return points;
}

// By 30 degrees, and by -120.
constexpr CornerPoints TurnedBy30{{{0, 0}, {369, -213}, {160, 277}}};
constexpr CornerPoints TurnedByMinus120{{{0, 0}, {-213, 369}, {-277, -160}}};
constexpr CornerPoints Upright{{{0, 0}, {426, 0}, {0, 320}}};

TEST_F(FreeEditPicture, ComesUpAsLargeAsItsDialogUnits) {
    const FreeEditWindows opened = Open();
    const ExpectedPlace many = SeenWindow::InPixels({0, 0, 1024, 1024});
    EXPECT_EQ(PictureWidth * 1024 / many.width, UnitsWidth);
    EXPECT_EQ(PictureHeight * 1024 / many.height, UnitsHeight);
    const BmpView seen = opened.SeenCanvas();
    ExpectPictureAt(seen, Upright);
    EXPECT_TRUE(IsNear(seen.At(UnitsWidth - 1, UnitsHeight - 1), ColorOfPicture(1, 1)));
    EXPECT_EQ(seen.At(UnitsWidth, 0), White);
    EXPECT_EQ(seen.At(0, UnitsHeight), White);
    Close(opened);
}

TEST_F(FreeEditPicture, TurnsWithTheRotationSlider) {
    const FreeEditWindows opened = Open();
    SetSlider(opened, RotationSlider, 30);
    EXPECT_EQ(opened.window.Text(RotationLabel), "Rotate: 30");
    ExpectShown(opened, TurnedBy30);
    SetSlider(opened, RotationSlider, -120);
    EXPECT_EQ(opened.window.Text(RotationLabel), "Rotate: -120");
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, 500);
    Scroll(opened, WM_VSCROLL, SB_THUMBTRACK, 200);
    ExpectShown(opened, Panned(TurnedByMinus120, 500, 200));
    SetSlider(opened, RotationSlider, 0);
    EXPECT_EQ(opened.window.Text(RotationLabel), "Rotate: 0");
    ExpectShown(opened, Panned(Upright, 500, 200));
    Close(opened);
}

TEST_F(FreeEditPicture, StretchesWithTheStretchSlider) {
    const FreeEditWindows opened = Open();
    SetSlider(opened, StretchSlider, 50);
    EXPECT_EQ(opened.window.Text(StretchLabel), "Stretch: 0.50");
    ExpectShown(opened, {{{0, 0}, {213, 0}, {0, 160}}});
    SetSlider(opened, StretchSlider, 500);
    EXPECT_EQ(opened.window.Text(StretchLabel), "Stretch: 5.00");
    ExpectShown(opened, {{{0, 0}, {2130, 0}, {0, 1600}}});
    SetSlider(opened, StretchSlider, 0);
    EXPECT_EQ(opened.window.Text(StretchLabel), "Stretch: 0.00");
    ExpectWhite(opened);
    Close(opened);
}

TEST_F(FreeEditPicture, OnlySomeEventsOfASliderCount) {
    const FreeEditWindows opened = Open();
    Send(opened.window.Item(RotationSlider), TBM_SETPOS, TRUE, 30);
    for (const int code : {TB_LINEUP, TB_LINEDOWN, TB_THUMBPOSITION, TB_TOP, TB_BOTTOM}) {
        SendSlider(opened, RotationSlider, code);
        EXPECT_EQ(opened.window.Text(RotationLabel), "Rotation: 0") << code;
    }
    ExpectShown(opened, Upright);
    int degrees = 30;
    for (const int code : {TB_PAGEUP, TB_PAGEDOWN, TB_THUMBTRACK, TB_ENDTRACK}) {
        Send(opened.window.Item(RotationSlider), TBM_SETPOS, TRUE, ++degrees);
        SendSlider(opened, RotationSlider, code);
        EXPECT_EQ(opened.window.Text(RotationLabel), "Rotate: " + std::to_string(degrees)) << code;
    }
    Close(opened);
}

TEST_F(FreeEditPicture, KeysTurnAtOnceAfterOpening) {
    const FreeEditWindows opened = Open();
    EXPECT_EQ(opened.window.FocusedId(), RotationSlider);
    for (int i = 0; i < 3; ++i) {
        PressKey(VK_RIGHT);
    }
    EXPECT_TRUE(WaitFor([&] { return opened.window.Text(RotationLabel) == "Rotate: 3"; }));
    PressKey(VK_TAB);
    EXPECT_TRUE(WaitFor([&] { return opened.window.FocusedId() == StretchSlider; }));
    EXPECT_TRUE(WaitUntilLasting([&] { return PixelAt(opened.OnCanvas(200, 100)) != RGB(128, 160, 200); }))
        << "the canvas is no longer seen";
    PressKey(VK_NEXT);
    EXPECT_TRUE(WaitFor([&] { return opened.window.Text(StretchLabel) == "Stretch: 1.01"; }));
    Close(opened);
}

TEST_F(FreeEditPicture, FollowsTheThumbWhileItIsDragged) {
    const FreeEditWindows opened = Open();
    const HWND slider = opened.window.Item(RotationSlider);
    RECT thumb{};
    const std::uint32_t place = opened.window.PutInside(&thumb, sizeof thumb);
    Send(slider, TBM_GETTHUMBRECT, 0, static_cast<LPARAM>(place));
    opened.window.GetFromInside(place, &thumb, sizeof thumb);
    const POINT from = ScreenPointOf(slider, {(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2});
    MoveMouse(from);
    PressMouse();
    for (int step = 1; step <= 6; ++step) {
        MoveMouse({from.x + 5 * step, from.y});
    }
    EXPECT_TRUE(WaitFor([&] { return Send(slider, TBM_GETPOS) > 10; }));
    Settle(opened);
    EXPECT_EQ(opened.window.Text(RotationLabel), "Rotate: " + std::to_string(Send(slider, TBM_GETPOS)));
    EXPECT_EQ(PixelAt(opened.OnCanvas(2, 310)), RGB(255, 255, 255)); // where the picture was
    MoveMouse({from.x + 300, from.y - 400});                         // far off the window's bar
    ReleaseMouse();
    EXPECT_TRUE(WaitFor([&] { return opened.window.Text(RotationLabel) == "Rotate: 180"; }));
    Close(opened);
}

TEST_F(FreeEditPicture, PansInStepsOfItsScrollBars) {
    const FreeEditWindows opened = Open();
    Scroll(opened, WM_VSCROLL, SB_LINEDOWN);
    Scroll(opened, WM_HSCROLL, SB_LINERIGHT);
    ExpectShown(opened, Panned(Upright, 50, 5));
    Scroll(opened, WM_VSCROLL, SB_PAGEDOWN);
    Scroll(opened, WM_HSCROLL, SB_PAGERIGHT);
    ExpectShown(opened, Panned(Upright, 100, 55));
    Scroll(opened, WM_VSCROLL, SB_PAGEUP);
    Scroll(opened, WM_VSCROLL, SB_PAGEUP);
    Scroll(opened, WM_VSCROLL, SB_LINEUP);
    Scroll(opened, WM_HSCROLL, SB_LINELEFT);
    ExpectShown(opened, Panned(Upright, 50, -50));
    EXPECT_EQ(ScrollBarOf(opened, SB_VERT).nPos, -50);
    EXPECT_EQ(ScrollBarOf(opened, SB_HORZ).nPos, 50);
    for (const int code : {SB_THUMBPOSITION, SB_TOP, SB_BOTTOM, SB_ENDSCROLL}) {
        Scroll(opened, WM_VSCROLL, code, 300);
    }
    ExpectShown(opened, Panned(Upright, 50, -50));
    Close(opened);
}

TEST_F(FreeEditPicture, ThumbInTheNegativeHalfSendsThePictureAway) {
    const FreeEditWindows opened = Open();
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, -100);
    ExpectWhite(opened);
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, 100);
    ExpectShown(opened, Panned(Upright, 100, 0));
    Close(opened);
}

TEST_F(FreeEditPicture, PanIsWhereTheEventGoesAlsoBehindTheBarsEnd) {
    const FreeEditWindows opened = Open();
    Scroll(opened, WM_VSCROLL, SB_THUMBTRACK, 1000);
    EXPECT_LT(ScrollBarOf(opened, SB_VERT).nPos, 1000); // the bar's end, for a page of it is shown
    Scroll(opened, WM_VSCROLL, SB_THUMBTRACK, 600);
    ExpectShown(opened, Panned(Upright, 0, 600));
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, 1000);
    const BmpView seen = opened.SeenCanvas();
    EXPECT_EQ(seen.At(998, 700), White);
    EXPECT_TRUE(IsNear(seen.At(1001, 700), ColorOfPicture(0, 100.5 / UnitsHeight)));
    Close(opened);
}

TEST_F(FreeEditPicture, IsPannedWithTheMouseOnItsBars) {
    const FreeEditWindows opened = Open();
    RECT frame{};
    GetWindowRect(opened.canvas, &frame);
    const int half = GetSystemMetrics(SM_CXVSCROLL) / 2;
    const POINT down{frame.right - half, frame.bottom - 3 * half};
    const POINT right{frame.right - 3 * half, frame.bottom - half};
    ClickAt(down);
    EXPECT_TRUE(WaitFor([&] { return ScrollBarOf(opened, SB_VERT).nPos == 5; }));
    ClickAt(right);
    EXPECT_TRUE(WaitFor([&] { return ScrollBarOf(opened, SB_HORZ).nPos == 50; }));
    ClickAt({down.x, down.y - 60}); // the page area
    EXPECT_TRUE(WaitFor([&] { return ScrollBarOf(opened, SB_VERT).nPos == 55; }));
    Settle(opened);
    ExpectShown(opened, Panned(Upright, 50, 55));
    Close(opened);
}

// The middle of a scroll bar's thumb on the screen.
POINT ThumbOf(const FreeEditWindows& opened, LONG object) {
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    const std::uint32_t inside = opened.window.PutInside(&info, sizeof info);
    const auto canvas = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(opened.canvas));
    EXPECT_NE(opened.window.CallInside("user32.dll", "GetScrollBarInfo",
                                       {canvas, static_cast<std::uint32_t>(object), inside}),
              0u);
    opened.window.GetFromInside(inside, &info, sizeof info);
    opened.window.CallInside("kernel32.dll", "GlobalFree", {inside});
    const int along = (info.xyThumbTop + info.xyThumbBottom) / 2;
    const RECT& bar = info.rcScrollBar;
    return object == OBJID_HSCROLL ? POINT{bar.left + along, (bar.top + bar.bottom) / 2}
                                   : POINT{(bar.left + bar.right) / 2, bar.top + along};
}

TEST_F(FreeEditPicture, IsPannedByItsThumbsOnlyRightAndDown) {
    const FreeEditWindows opened = Open();
    const POINT across = ThumbOf(opened, OBJID_HSCROLL);
    DragMouse(across, {across.x + 120, across.y + 40}); // not quite along the bar
    EXPECT_TRUE(WaitFor([&] { return ScrollBarOf(opened, SB_HORZ).nPos > 100; }));
    const POINT down = ThumbOf(opened, OBJID_VSCROLL);
    DragMouse(down, {down.x, down.y + 80});
    EXPECT_TRUE(WaitFor([&] { return ScrollBarOf(opened, SB_VERT).nPos > 50; }));
    Settle(opened);
    ExpectShown(opened, Panned(Upright, ScrollBarOf(opened, SB_HORZ).nPos, ScrollBarOf(opened, SB_VERT).nPos));
    const POINT moved = ThumbOf(opened, OBJID_HSCROLL);
    DragMouse(moved, {moved.x - 300, moved.y});
    ExpectWhite(opened);
    Close(opened);
}

TEST_F(FreeEditPicture, SavesThePicturesBoxAsTheScreenShowsIt) {
    const FreeEditWindows opened = Open("out.bmp");
    SetSlider(opened, RotationSlider, 30);
    Scroll(opened, WM_VSCROLL, SB_THUMBTRACK, 250);
    Scroll(opened, WM_HSCROLL, SB_THUMBTRACK, 40);
    Save(opened);
    const BmpView saved = ReadPicture(Path("out.bmp"));
    ASSERT_EQ(saved.Width(), 369 + 160);
    ASSERT_EQ(saved.Height(), 277 + 213);
    ExpectPictureAt(saved, Panned(TurnedBy30, 0, 213));
    const BmpView seen = opened.SeenCanvas();
    int differences = 0;
    for (int y = 0; y < saved.Height(); ++y) {
        for (int x = 0; x < saved.Width(); ++x) {
            differences += saved.At(x, y) == seen.At(x + 40, y + 250 - 213) ? 0 : 1;
        }
    }
    EXPECT_EQ(differences, 0);
    EXPECT_FALSE(Exists("out1.bmp"));
    Close(opened);
}

TEST_F(FreeEditPicture, SavesInTheFormatOfTheExtensionAsOftenAsAsked) {
    const FreeEditWindows opened = Open("out.png");
    Save(opened);
    const std::string first = ReadBytes(program_.Folder() / "out.png");
    EXPECT_EQ(first.substr(1, 3), "PNG");
    EXPECT_EQ(SizeOf(Path("out.png")), std::pair(UnitsWidth, UnitsHeight));
    Save(opened);
    EXPECT_EQ(ReadBytes(program_.Folder() / "out.png"), first);
    SetSlider(opened, StretchSlider, 50);
    Save(opened);
    EXPECT_EQ(SizeOf(Path("out.png")), std::pair(213, 160));
    EXPECT_TRUE(opened.window.IsQuiet());
    program_.SetText(TargetBox, Path("other.jpg"));
    Save(opened);
    EXPECT_EQ(Start("other.jpg"), "\xFF\xD8");
    Close(opened);
}

TEST_F(FreeEditPicture, SavesNothingWithoutATarget) {
    const FreeEditWindows opened = Open();
    program_.SetText(TargetBox, "");
    Save(opened);
    EXPECT_TRUE(opened.window.IsQuiet());
    EXPECT_FALSE(Exists("1.bmp"));
    EXPECT_FALSE(Exists("out.png"));
    Close(opened);
}

TEST_F(FreeEditPicture, FailedSaveSaysNothing) {
    WriteBytes(program_.Folder() / "out.png", "old");
    std::filesystem::create_directory(program_.Folder() / "out1.bmp"); // no step file can be written
    const FreeEditWindows opened = Open("out.png");
    Save(opened);
    EXPECT_TRUE(opened.window.IsQuiet());
    EXPECT_EQ(ReadBytes(program_.Folder() / "out.png"), "old");
    Close(opened);
}

TEST_F(FreeEditPicture, SavesTheWholeCanvasWhereThePictureHasNoHeight) {
    const FreeEditWindows opened = Open("out.bmp");
    SetSlider(opened, StretchSlider, 0);
    Save(opened);
    const SIZE canvas = opened.CanvasSize();
    const BmpView saved = ReadPicture(Path("out.bmp"));
    EXPECT_EQ(saved.Width(), canvas.cx);
    EXPECT_EQ(saved.Height(), canvas.cy);
    EXPECT_TRUE(IsAllWhite(saved));
    Close(opened);
}

TEST_F(FreeEditPicture, BeyondTheCanvasWhatIsSavedIsWhite) {
    const FreeEditWindows opened = Open("out.bmp");
    SetSlider(opened, StretchSlider, 500);
    Save(opened);
    const SIZE canvas = opened.CanvasSize();
    const BmpView saved = ReadPicture(Path("out.bmp"));
    ASSERT_EQ(saved.Width(), 5 * UnitsWidth);
    ASSERT_EQ(saved.Height(), 5 * UnitsHeight);
    EXPECT_NE(saved.At(canvas.cx - 1, canvas.cy - 1), White);
    EXPECT_EQ(saved.At(canvas.cx, canvas.cy - 1), White);
    EXPECT_EQ(saved.At(canvas.cx - 1, canvas.cy), White);
    EXPECT_EQ(saved.At(saved.Width() - 1, saved.Height() - 1), White);
    Close(opened);
}

// The press comes by message, for one with the mouse would bring the window in front of the other.
void PressSaveFromBelow(const FreeEditWindows& opened) {
    POINT save = MiddleOf(opened.window.Item(SaveLabel));
    ScreenToClient(opened.window.Window(), &save);
    Send(opened.window.Window(), WM_MOUSEMOVE, 0, MAKELPARAM(save.x, save.y));
    Send(opened.window.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(save.x, save.y));
}

TEST_F(FreeEditPicture, SavesThePictureAlsoBelowAnotherWindow) {
    const FreeEditWindows opened = Open("out.bmp");
    Save(opened);
    const std::string free = ReadBytes(program_.Folder() / "out.bmp");
    const HWND cover = CreateWindowExA(WS_EX_TOPMOST | WS_EX_NOACTIVATE, "Static", "", WS_POPUP | WS_VISIBLE, 0, 60,
                                       400, 300, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(WaitFor([&] {
        UpdateWindow(cover);
        return !IsNear(opened.SeenCanvas().At(200, 150), BmpView(free).At(200, 150));
    })) << "is not covered";
    std::filesystem::remove(program_.Folder() / "out.bmp");
    PressSaveFromBelow(opened);
    EXPECT_EQ(ReadBytes(program_.Folder() / "out.bmp"), free);
    SetSlider(opened, StretchSlider, 99); // drawn while it is covered
    PressSaveFromBelow(opened);
    ExpectPictureAt(ReadPicture(Path("out.bmp")), {{{0, 0}, {422, 0}, {0, 317}}});
    DestroyWindow(cover);
    ExpectShown(opened, {{{0, 0}, {422, 0}, {0, 317}}});
    Close(opened);
}

// The button that picks another picture is never seen, but works.
TEST_F(FreeEditPicture, AnotherPictureTakesItsPlace) {
    WriteBytes(program_.Folder() / "other.bmp",
               MakeBmp(300, 150, [](int x, int y) { return ColorOfPicture((x + 0.5) / 300, (y + 0.5) / 150); }));
    const FreeEditWindows opened = Open();
    PostMessageA(opened.window.Window(), WM_COMMAND, MAKEWPARAM(SelectButton, BN_CLICKED), 0);
    const OpenWindow picker = opened.window.Further();
    EXPECT_EQ(WindowText(picker.Window()), "Select the image");
    ExpectMissingFileRefused(picker);
    SetFileName(picker, Path("other.bmp"));
    PostMessageA(picker.Item(IDOK), BM_CLICK, 0, 0);
    picker.WaitUntilGone();
    ExpectShown(opened, {{{0, 0}, {200, 0}, {0, 100}}});
    EXPECT_EQ(opened.window.Text(PathBox), Path("other.bmp"));
    Close(opened);
}

TEST_F(FreeEditPicture, IsPaintedAnewWhereTheScreenLostIt) {
    const FreeEditWindows opened = Open();
    const auto canvas = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(opened.canvas));
    const COLORREF before = PixelAt(opened.OnCanvas(200, 100));
    EXPECT_TRUE(WaitFor([&] { // what is still to be painted may cover it again
        const std::uint32_t context = opened.window.CallInside("user32.dll", "GetDC", {canvas});
        opened.window.CallInside("gdi32.dll", "SetPixel", {context, 200, 100, 0});
        opened.window.CallInside("user32.dll", "ReleaseDC", {canvas, context});
        return PixelAt(opened.OnCanvas(200, 100)) == 0;
    }));
    opened.window.CallInside("user32.dll", "InvalidateRect", {canvas, 0, TRUE});
    EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(200, 100)) == before; }));
    Close(opened);
}

// From the old picture to the new one without a flash of the background in between, at a place that the picture covers
// all the while.
TEST_F(FreeEditPicture, NeverFlashesWhileASliderMoves) {
    const FreeEditWindows opened = Open();
    const POINT place = opened.OnCanvas(150, 150);
    std::atomic<bool> isOver = false;
    int samples = 0, whites = 0;
    std::thread watcher([&] {
        const HDC screen = GetDC(nullptr);
        for (; !isOver; ++samples) {
            whites += GetPixel(screen, place.x, place.y) == RGB(255, 255, 255) ? 1 : 0;
        }
        ReleaseDC(nullptr, screen);
    });
    for (int degrees = -30; degrees <= 30; degrees += 5) {
        SetSlider(opened, RotationSlider, degrees);
    }
    for (int hundredths = 100; hundredths <= 300; hundredths += 20) {
        SetSlider(opened, StretchSlider, hundredths);
    }
    isOver = true;
    watcher.join();
    EXPECT_GT(samples, 100);
    EXPECT_EQ(whites, 0);
    Close(opened);
}

} // namespace
