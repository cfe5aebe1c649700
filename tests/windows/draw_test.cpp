// The paint window of the running program: its controls, its tools with a real mouse, undoing, and what it saves.
#include "tests/windows/drawfixture.h"
#include "tests/windows/expected/drawwindow.h"

#include <psapi.h>

#include <cstring>

namespace {

using namespace lumbrix;
using namespace tests;

class Draw : public DrawTest {
  protected:
    BITMAP SizeOf(const char* name) const {
        const HANDLE loaded = LoadImageA(nullptr, Path(name).c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE);
        BITMAP size{};
        GetObjectA(loaded, sizeof size, &size);
        DeleteObject(loaded);
        return size;
    }
};

HPEN Pen(COLORREF color, int width = 1, int style = PS_SOLID) { return CreatePen(style, width, color); }
HBRUSH NoBrush() { return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)); }

constexpr COLORREF StartFill = RGB(196, 193, 196);

int UnitsOf(int pixels, int pixelsOf1024) { return pixels * 1024 / pixelsOf1024; }

TEST_F(Draw, WindowIsAsExpected) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    MoveMouse({640, 1000});
    Settle(draw);
    const ExpectedPlace many = SeenWindow::InPixels({0, 0, 1024, 1024});
    const ExpectedDrawSizes sizes{UnitsOf(GetSystemMetrics(SM_CXSCREEN), many.width),
                                  UnitsOf(GetSystemMetrics(SM_CYSCREEN), many.height), UnitsOf(UnitsWidth, many.width),
                                  UnitsOf(UnitsHeight, many.height)};
    SeenWindow(draw.window).Expect(ExpectedDrawWindow(sizes));
    EXPECT_TRUE(draw.window.IsChecked(LineOption));
    for (const auto& [list, count, selected] :
         {std::tuple{PatternList, 8, 1}, {PenWidthList, 10, 0}, {PenTypeList, 5, 0}}) {
        EXPECT_EQ(Send(draw.window.Item(list), CB_GETCOUNT), count) << list;
        EXPECT_EQ(Send(draw.window.Item(list), CB_GETCURSEL), selected) << list;
    }
    CloseAll(draw, opened);
}

TEST_F(Draw, ShowsThePictureAndDeletesItsFile) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    EXPECT_FALSE(Exists("out2.bmp"));
    EXPECT_TRUE(Exists("out1.bmp"));
    const BmpView seen = draw.Seen();
    for (const POINT place : {POINT{1, 1}, POINT{200, 100}, POINT{400, 300}}) {
        EXPECT_TRUE(IsNear(seen.At(place.x, place.y), ColorOfPicture((place.x + 0.5) / 427, (place.y + 0.5) / 321)))
            << place.x;
    }
    // The same picture, stretched by one pixel in each direction.
    const OwnCanvas expected(seen);
    const BITMAP size = SizeOf("out1.bmp");
    const HBITMAP loaded = static_cast<HBITMAP>(LoadImageA(nullptr, Path("out1.bmp").c_str(), IMAGE_BITMAP,
                                                           size.bmWidth + 1, size.bmHeight + 1, LR_LOADFROMFILE));
    const HDC context = CreateCompatibleDC(expected.Context());
    SelectObject(context, loaded);
    BitBlt(expected.Context(), 0, 0, size.bmWidth + 1, size.bmHeight + 1, context, 0, 0, SRCCOPY);
    DeleteDC(context);
    DeleteObject(loaded);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, LineFollowsTheMouseAndLeavesNothingElse) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    const OwnCanvas expected(draw.Seen());
    Drag(draw, {40, 50}, {240, 130});
    expected.Use(Pen(RGB(0, 0, 0)), NoBrush());
    expected.Line({40, 50}, {240, 130});
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, RubberBandLeavesNothing) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenDraw(opened);
    const OwnCanvas expected(draw.Seen());
    Press(draw, 40, 50);
    for (int step = 0; step < 40; ++step) {
        Move(draw, 40 + 7 * step % 300, 50 + 11 * step % 200);
    }
    Move(draw, 140, 150);
    Release(draw);
    expected.Use(Pen(RGB(0, 0, 0)), NoBrush());
    expected.Line({40, 50}, {140, 150});
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, ShapesAreDrawnWithPenAndFill) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OwnCanvas expected(draw.Seen());
    expected.Use(Pen(RGB(0, 0, 0)), CreateSolidBrush(StartFill));

    draw.window.Click(SquareBoxOption);
    Drag(draw, {20, 20}, {120, 80});
    RoundRect(expected.Context(), 20, 20, 120, 80, 0, 0);

    draw.window.Click(RoundedBoxOption);
    Drag(draw, {240, 90}, {140, 20}); // upwards and to the left
    RoundRect(expected.Context(), 140, 20, 240, 90, 14, 14);

    draw.window.Click(OvalOption);
    Drag(draw, {20, 120}, {120, 180});
    RoundRect(expected.Context(), 20, 120, 120, 180, 101, 61);

    draw.window.Click(CircleOption);
    Drag(draw, {140, 120}, {190, 200}); // the longer side counts
    RoundRect(expected.Context(), 140, 120, 220, 200, 81, 81);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, PatternsAndPensAreThoseOfTheLists) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OwnCanvas expected(draw.Seen());
    draw.window.Click(SquareBoxOption);
    constexpr int Hatches[] = {HS_HORIZONTAL, HS_VERTICAL, HS_FDIAGONAL, HS_BDIAGONAL, HS_CROSS, HS_DIAGCROSS};
    for (int i = 0; i < 6; ++i) {
        Choose(draw, PatternList, i + 2);
        Stroke(draw, {10 + 60 * i, 10}, {60 + 60 * i, 60});
        SetBkColor(expected.Context(), RGB(255, 255, 255));
        expected.Use(Pen(RGB(0, 0, 0)), CreateHatchBrush(Hatches[i], StartFill));
        RoundRect(expected.Context(), 10 + 60 * i, 10, 60 + 60 * i, 60, 0, 0);
    }
    Choose(draw, PatternList, 0);
    for (int type = 0; type < 5; ++type) {
        Choose(draw, PenTypeList, type);
        Stroke(draw, {10 + 70 * type, 80}, {70 + 70 * type, 130});
        expected.Use(Pen(RGB(0, 0, 0), 1, type), NoBrush());
        RoundRect(expected.Context(), 10 + 70 * type, 80, 70 + 70 * type, 130, 0, 0);
    }
    Choose(draw, PenTypeList, 0);
    EXPECT_TRUE(IsWindowEnabled(draw.window.Item(PenTypeList)));
    Choose(draw, PenWidthList, 6);
    EXPECT_FALSE(IsWindowEnabled(draw.window.Item(PenTypeList)));
    Stroke(draw, {20, 160}, {120, 220});
    expected.Use(Pen(RGB(0, 0, 0), 7), NoBrush());
    RoundRect(expected.Context(), 20, 160, 120, 220, 0, 0);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, FreehandGoesThroughEveryPoint) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OwnCanvas expected(draw.Seen());
    expected.Use(Pen(RGB(0, 0, 0)), NoBrush());
    draw.window.Click(FreehandOption);
    Press(draw, 200, 150);
    POINT last{200, 150};
    for (int i = 1; i <= 500; ++i) {
        const POINT next{200 + (i * 37) % 150 - 70, 150 + (i * 53) % 120 - 60};
        PostMessageA(draw.canvas, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(next.x, next.y));
        expected.Line(last, next);
        last = next;
        Sleep(2);
    }
    EXPECT_TRUE(
        WaitFor([&] { return draw.Status() == "Pos: " + std::to_string(last.x) + ", " + std::to_string(last.y); }));
    Release(draw);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, BeamsFanOutFromTheFirstPoint) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OwnCanvas expected(draw.Seen());
    expected.Use(Pen(RGB(0, 0, 0)), NoBrush());
    draw.window.Click(BeamsOption);
    Press(draw, 100, 100);
    for (const POINT end : {POINT{200, 40}, POINT{200, 100}, POINT{200, 160}}) {
        Move(draw, end.x, end.y);
        expected.Line({100, 100}, end);
    }
    Release(draw);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, FillsTheAreaOfOneColor) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    Choose(draw, PatternList, 0);
    draw.window.Click(SquareBoxOption);
    Stroke(draw, {50, 50}, {150, 150});
    Choose(draw, PatternList, 1);
    draw.window.Click(FillAreaOption);
    ClickAt(draw.On(100, 100));
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(100, 100) == Rgb{196, 193, 196}; }));
    const BmpView seen = draw.Seen();
    EXPECT_EQ(seen.At(51, 51), (Rgb{196, 193, 196}));
    EXPECT_EQ(seen.At(50, 50), tests::Black);
    EXPECT_EQ(seen.At(40, 40), White);
    Choose(draw, PatternList, 0); // hollow fills nothing, but can be undone
    ClickAt(draw.On(20, 20));
    Settle(draw);
    EXPECT_EQ(draw.Seen().At(20, 20), White);
    draw.window.Click(UndoButton);
    EXPECT_EQ(draw.Seen().At(100, 100), (Rgb{196, 193, 196}));
    draw.window.Click(UndoButton);
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(100, 100) == White; }));
    CloseAll(draw, opened);
}

TEST_F(Draw, FillsOneMeshOfAHatch) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    Choose(draw, PatternList, 6); // crossed lines, 8 pixels apart
    draw.window.Click(SquareBoxOption);
    Stroke(draw, {40, 40}, {140, 140});
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(40, 90) == tests::Black; }));
    const BmpView hatched = draw.Seen();
    const Rgb line{196, 193, 196};
    int x = 80, y = 80; // the upper left corner of a mesh
    while (!(hatched.At(x - 1, y) == line && hatched.At(x, y) == White)) {
        ASSERT_LT(++x, 100);
    }
    while (!(hatched.At(x, y - 1) == line && hatched.At(x, y) == White)) {
        ASSERT_LT(++y, 100);
    }
    Choose(draw, PatternList, 1);
    draw.window.Click(FillAreaOption);
    ClickAt(draw.On(x + 3, y + 3));
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(x, y) == line; }));
    const BmpView filled = draw.Seen();
    EXPECT_EQ(filled.CountOthers(White), hatched.CountOthers(White) + 7 * 7);
    EXPECT_EQ(filled.At(x + 6, y + 6), line);
    EXPECT_EQ(filled.At(x + 8, y), White); // the next mesh
    CloseAll(draw, opened);
}

TEST_F(Draw, ColorFieldsAreForPenAndFill) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    ClickAt(MiddleOf(draw.window.Item(120))); // red
    EXPECT_TRUE(WaitFor([&] {
        return PixelAt(ScreenPointOf(draw.window.Item(PenIndicator), {1, 1})) == RGB(255, 0, 0);
    }));
    EXPECT_EQ(PixelAt(ScreenPointOf(draw.window.Item(FillIndicator), {3, 3})), StartFill) << "the other is drawn anew";
    ChooseFillColor(draw, 121); // green
    EXPECT_TRUE(WaitFor([&] {
        return PixelAt(ScreenPointOf(draw.window.Item(FillIndicator), {3, 3})) == RGB(0, 255, 0);
    }));
    ClickAt(MiddleOf(draw.window.Item(FillIndicator))); // neither of the two is a field
    Settle(draw);
    const OwnCanvas expected(draw.Seen());
    draw.window.Click(SquareBoxOption);
    Stroke(draw, {20, 20}, {90, 90});
    expected.Use(Pen(RGB(255, 0, 0)), CreateSolidBrush(RGB(0, 255, 0)));
    RoundRect(expected.Context(), 20, 20, 90, 90, 0, 0);
    ExpectCanvas(draw, expected);
    CloseAll(draw, opened);
}

TEST_F(Draw, TwelveStrokesCanBeUndoneAndRedone) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    draw.window.Click(UndoButton);
    draw.window.Click(RedoButton);
    EXPECT_TRUE(WaitFor([&] { return IsAllWhite(draw.Seen()); }));
    const auto isDrawn = [&](int stroke) { return draw.Seen().At(30, 10 + 10 * stroke) == tests::Black; };
    for (int stroke = 0; stroke < 13; ++stroke) {
        Stroke(draw, {20, 10 + 10 * stroke}, {120, 10 + 10 * stroke});
    }
    EXPECT_TRUE(WaitFor([&] { return isDrawn(12); }));
    for (int i = 0; i < 14; ++i) {
        draw.window.Click(UndoButton);
    }
    EXPECT_TRUE(WaitFor([&] { return !isDrawn(1); }));
    EXPECT_TRUE(isDrawn(0)); // the thirteenth pushed it out
    for (int i = 0; i < 14; ++i) {
        draw.window.Click(RedoButton);
    }
    EXPECT_TRUE(WaitFor([&] { return isDrawn(12); }));
    CloseAll(draw, opened);
}

TEST_F(Draw, StatusTellsWhereTheMouseIs) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    MoveMouse(draw.On(30, 40));
    EXPECT_TRUE(WaitFor([&] { return draw.Status() == "Pos: 30, 40"; }));
    Press(draw, 30, 40);
    EXPECT_EQ(draw.Status(), "Pos: 30, 40");
    Move(draw, 50, 45);
    EXPECT_EQ(draw.Status(), "Pos: 30, 40  -  50, 45");
    Move(draw, -6, 45);
    EXPECT_EQ(draw.Status(), "Pos: 30, 40  - -6, 45");
    Release(draw);
    draw.window.Click(SquareBoxOption);
    Press(draw, 30, 40);
    Move(draw, 50, 45);
    EXPECT_EQ(draw.Status(), "Pos: 30, 40  -  50, 45\r\nSize: 20 x 5");
    Release(draw);
    MoveMouse(MiddleOf(draw.window.Item(ClearButton)));
    EXPECT_TRUE(WaitFor([&] { return draw.Status() == "Pos:"; }));
    CloseAll(draw, opened);
}

TEST_F(Draw, DragBeyondTheCanvasGoesOn) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    MoveMouse(draw.On(100, 100));
    PressMouse();
    MoveMouse(draw.On(60, 60));
    MoveMouse(draw.On(-3, -3));
    EXPECT_TRUE(WaitFor([&] { return draw.Status() == "Pos: 100, 100  - -3,-3"; })) << draw.Status();
    ReleaseMouse();
    Settle(draw);
    EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(50, 50) == tests::Black; }));
    CloseAll(draw, opened);
}

TEST_F(Draw, FirstDrawingComesBackAndTheSecondIsLost) {
    const FreeEditWindows opened = Open("out.png");
    const DrawWindows first = OpenBlank(opened);
    first.window.Click(SquareBoxOption);
    Stroke(first, {20, 20}, {300, 200});
    CloseDraw(first, SaveButton);
    EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(100, 100)) == StartFill; }));
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("out2.bmp"));
    EXPECT_FALSE(Exists("out3.bmp"));
    opened.window.Activate();
    Save(opened);
    const BmpView saved = ReadPicture(Path("out.png"));
    EXPECT_EQ(saved.At(100, 100), (Rgb{196, 193, 196}));
    EXPECT_EQ(saved.At(5, 5), White);

    const DrawWindows second = OpenBlank(opened);
    CloseDraw(second, SaveButton);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
    EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(100, 100)) == StartFill; })) << "the second came back";
    EXPECT_TRUE(Exists("out3.bmp"));
    EXPECT_TRUE(Exists("out4.bmp"));
    Close(opened);
}

TEST_F(Draw, QuitAndTheCloseBoxLeaveThePicture) {
    const FreeEditWindows opened = Open();
    for (const bool byBox : {false, true}) {
        const DrawWindows draw = OpenBlank(opened);
        if (byBox) {
            draw.window.Close();
            draw.window.WaitUntilGone();
        } else {
            CloseDraw(draw);
        }
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
        EXPECT_TRUE(WaitFor([&] { return PixelAt(opened.OnCanvas(100, 100)) != RGB(255, 255, 255); }));
        opened.window.Activate();
    }
    Close(opened);
}

TEST_F(Draw, SavedFileHasItsExactForm) {
    const FreeEditWindows opened = Open();
    // The counter is one further after the first time, so what is saved then stays.
    CloseDraw(OpenDraw(opened));
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
    opened.window.Activate();
    const DrawWindows draw = OpenBlank(opened);
    const BmpView seen = draw.Seen();
    CloseDraw(draw, SaveButton);
    ASSERT_TRUE(WaitFor([&] { return Exists("out3.bmp"); }));
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
    const std::string file = ReadBytes(program_.Folder() / "out3.bmp");
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        std::memcpy(&value, &file[at], sizeof value);
        return value;
    };
    // The border of the canvas hides its last two columns and rows on each side.
    const auto width = static_cast<std::uint32_t>(seen.Width() + 4);
    const auto height = static_cast<std::uint32_t>(seen.Height() + 4);
    const std::uint32_t rowBytes = (width * 3 + 3) / 4 * 4;
    EXPECT_EQ(file.substr(0, 2), "BM");
    EXPECT_EQ(number(2), rowBytes * height + 54);
    EXPECT_EQ(file.size(), rowBytes * height + 54);
    EXPECT_EQ(number(6), 0u);
    EXPECT_EQ(number(10), 54u);
    EXPECT_EQ(number(14), 40u);
    EXPECT_EQ(number(18), width);
    EXPECT_EQ(number(22), height);
    EXPECT_EQ(number(26), 1u | 24u << 16);
    for (std::size_t at = 30; at < 54; at += 4) {
        EXPECT_EQ(number(at), 0u) << at;
    }
    Close(opened);
}

TEST_F(Draw, MissingFileIsToldAndTheWindowStays) {
    const FreeEditWindows opened = Open("none\\out.png"); // a folder that is not there
    PressLabel(opened, DrawLabel);
    const std::string missing = Path("none\\out2.bmp");
    const OpenWindow box(WaitForTop([](HWND top) {
        return GetDlgItem(top, IDOK) != nullptr && WindowText(top).empty() && GetDlgItem(top, 0xFFFF) != nullptr;
    }));
    EXPECT_EQ(box.Text(0xFFFF), "No " + missing);
    box.BeginClick(IDOK);
    const HWND window = WaitForTop([](HWND top) { return WindowText(top) == "Draw"; });
    const OpenWindow draw(window, {program_.Window(), opened.window.Window(), opened.canvas});
    draw.BeginClick(QuitButton);
    draw.WaitUntilGone();
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(opened.window.Window()) != FALSE; }));
    Close(opened);
}

TEST_F(Draw, ManyStrokesTakeNoMoreMemoryThanTheListsHold) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, Process());
    const auto memory = [&] {
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(process, &counters, sizeof counters);
        return counters.PagefileUsage;
    };
    const auto strokes = [&](int count) {
        for (int i = 0; i < count; ++i) {
            Stroke(draw, {20, 20 + i % 200}, {120, 20 + i % 200});
        }
    };
    strokes(30);
    const std::size_t before = memory();
    strokes(200);
    EXPECT_LE(memory(), before + 4 * 430 * 330 * 2) << "grows";
    CloseHandle(process);
    CloseAll(draw, opened);
}

} // namespace
