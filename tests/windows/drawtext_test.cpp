// Text on the canvas of the paint window in the running program, and the window for entering it.
#include "tests/windows/drawfixture.h"
#include "tests/windows/expected/textentry.h"

namespace {

using namespace lumbrix;
using namespace tests;

namespace entry = lumbrix::textentry;

class DrawnText : public DrawTest {
  protected:
    static OpenWindow PressWith(const DrawWindows& draw, int tool, int x, int y) {
        draw.window.Click(tool);
        ClickAt(draw.On(x, y));
        return draw.window.Further();
    }

    static void Exit(const OpenWindow& window, const std::string& text) {
        window.SetText(entry::TextBox, text);
        window.BeginClick(entry::ExitButton);
        window.WaitUntilGone();
    }

    static void Abort(const OpenWindow& window) {
        window.BeginClick(entry::AbortButton);
        window.WaitUntilGone();
    }

    static HWND BeginChangeFont(const OpenWindow& window) {
        window.BeginClick(entry::ChangeFontButton);
        const HWND fonts = window.WaitForDialog();
        EXPECT_TRUE(WaitFor([&] { return GetDlgItem(fonts, IDOK) != nullptr; }));
        return fonts;
    }

    static void EndChangeFont(const OpenWindow& window, HWND fonts, int button) {
        PostMessageA(GetDlgItem(fonts, button), BM_CLICK, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(fonts); }));
        EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(window.Window()) != 0; }));
    }

    // A ground on which black, white and the colours of text show.
    static void PutGround(const DrawWindows& draw) {
        Choose(draw, PatternList, 1);
        draw.window.Click(SquareBoxOption);
        Stroke(draw, {0, 0}, {400, 300});
    }

    // The pixels of the dark or of the light side of letters, softened as they may be: their middle and their box.
    struct Side {
        double x = 0;
        double y = 0;
        InkBox box;
    };
    static Side SideOf(const BmpView& seen, const InkBox& within, bool isDark) {
        constexpr int Ground = 196;
        Side side{0, 0, {within.right, within.bottom, 0, 0}};
        int count = 0;
        for (int y = within.top; y < within.bottom; ++y) {
            for (int x = within.left; x < within.right; ++x) {
                const int red = seen.At(x, y).red;
                if (isDark ? red < Ground - 30 : red > Ground + 20) {
                    side.x += x;
                    side.y += y;
                    ++count;
                    side.box = {std::min(side.box.left, x), std::min(side.box.top, y), std::max(side.box.right, x + 1),
                                std::max(side.box.bottom, y + 1)};
                }
            }
        }
        return count == 0 ? Side() : Side{side.x / count, side.y / count, side.box};
    }

    // Sunken letters are dark above and to the left.
    static void ExpectRelief(const BmpView& seen, const InkBox& within, bool isSunken) {
        const Side upper = SideOf(seen, within, isSunken);
        const Side lower = SideOf(seen, within, !isSunken);
        EXPECT_LT(upper.x, lower.x);
        EXPECT_LT(upper.y, lower.y);
    }

    // Until both sides are there and stay as they are.
    static bool HasText(const DrawWindows& draw, const InkBox& within) {
        return WaitUntilLasting([&] {
            const BmpView seen = draw.Seen();
            return SideOf(seen, within, true).x > 0 && SideOf(seen, within, false).x > 0;
        });
    }

    // How many pixels have a colour.
    static int CountOf(const BmpView& seen, Rgb color) {
        return seen.Width() * seen.Height() - seen.CountOthers(color);
    }
};

TEST_F(DrawnText, WindowIsAsExpected) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 30, 30);
    ExpectedWindow expected = ExpectedTextEntry();
    for (ExpectedControl& control : expected.controls) {
        if (control.kind == ExpectedKind::MultiLineBox) {
            control.caption = window.Text(control.id);
        }
    }
    SeenWindow(window).Expect(expected);
    EXPECT_EQ(window.Text(entry::TextBox), "");
    EXPECT_EQ(window.Text(entry::AngleBox), "0");
    window.BeginClick(entry::AbortButton);
    window.WaitUntilGone();
    CloseAll(draw, opened);
}

TEST_F(DrawnText, NormalTextIsInTheFillColorWhereTheMouseWas) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    Exit(PressWith(draw, NormalTextOption, 60, 40), "HHHH\r\nHH");
    EXPECT_TRUE(WaitFor([&] { return !IsAllWhite(draw.Seen()); }));
    const BmpView seen = draw.Seen();
    InkBox ink{seen.Width(), seen.Height(), 0, 0};
    for (int y = 0; y < seen.Height(); ++y) {
        for (int x = 0; x < seen.Width(); ++x) {
            if (!(seen.At(x, y) == White)) {
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                       std::max(ink.bottom, y + 1)};
            }
        }
    }
    EXPECT_NEAR(ink.left, 61, 2);
    EXPECT_GE(ink.top, 40);
    EXPECT_LE(ink.top, 46);
    EXPECT_GT(ink.bottom - ink.top, 20); // two lines
    EXPECT_GT(CountOf(seen, {196, 193, 196}), 20);
    CloseAll(draw, opened);
}

TEST_F(DrawnText, ReliefHasADarkAndALightSide) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    PutGround(draw);
    Exit(PressWith(draw, SunkenTextOption, 60, 40), "HHHH");
    EXPECT_TRUE(WaitFor([&] { return CountOf(draw.Seen(), {0, 0, 128}) > 10; }));
    EXPECT_GT(CountOf(draw.Seen(), White), 10);
    const InkBox upper{40, 40, 200, 65};
    const InkBox lower{40, 140, 200, 165};
    EXPECT_TRUE(HasText(draw, upper));
    ExpectRelief(draw.Seen(), upper, true);
    Exit(PressWith(draw, RaisedTextOption, 60, 140), "HHHH");
    EXPECT_TRUE(HasText(draw, lower));
    ExpectRelief(draw.Seen(), lower, false);
    CloseAll(draw, opened);
}

TEST_F(DrawnText, ReliefKeepsItsSidesWithASlantedFont) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    PutGround(draw);
    for (const auto& [tool, x] : {std::pair{SunkenTextOption, 100}, {RaisedTextOption, 250}}) {
        const OpenWindow window = PressWith(draw, tool, x, 200);
        window.SetText(entry::AngleBox, "90");
        EndChangeFont(window, BeginChangeFont(window), IDOK);
        Exit(window, "HHHHHHHH");
        const InkBox around{x - 40, 20, x + 60, 280};
        EXPECT_TRUE(HasText(draw, around));
        ExpectRelief(draw.Seen(), around, tool == SunkenTextOption);
        const InkBox light = SideOf(draw.Seen(), around, false).box;
        EXPECT_GT(light.bottom - light.top, 3 * (light.right - light.left)); // upwards
        EXPECT_NEAR(light.bottom, 200, 5);
    }
    CloseAll(draw, opened);
}

TEST_F(DrawnText, CancelledFontChangesNothingButWhatIsKept) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 60, 200);
    window.SetText(entry::TextBox, "kept");
    for (int i = 0; i < 2; ++i) {
        EndChangeFont(window, BeginChangeFont(window), IDCANCEL);
    }
    window.BeginClick(entry::AbortButton);
    window.WaitUntilGone();
    const OpenWindow again = PressWith(draw, NormalTextOption, 100, 200);
    EXPECT_EQ(again.Text(entry::TextBox), "kept");
    Exit(again, "HHHH");
    EXPECT_TRUE(WaitFor([&] { return !IsAllWhite(draw.Seen()); }));
    CloseAll(draw, opened);
}

TEST_F(DrawnText, EmptyAndAbortedEntriesDrawNothingAndCannotBeUndone) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    draw.window.Click(LineOption);
    Stroke(draw, {20, 20}, {120, 20});
    Exit(PressWith(draw, NormalTextOption, 60, 40), "");
    const OpenWindow window = PressWith(draw, NormalTextOption, 90, 60);
    window.SetText(entry::TextBox, "not wanted");
    window.BeginClick(entry::AbortButton);
    window.WaitUntilGone();
    Settle(draw);
    draw.window.Click(UndoButton);
    EXPECT_TRUE(WaitFor([&] { return IsAllWhite(draw.Seen()); }));
    CloseAll(draw, opened);
}

TEST_F(DrawnText, ClearDoesNothingOnceTextIsThere) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    Exit(PressWith(draw, NormalTextOption, 60, 40), "HHHH");
    EXPECT_TRUE(WaitFor([&] { return !IsAllWhite(draw.Seen()); }));
    const BmpView before = draw.Seen();
    draw.window.Click(ClearButton);
    EXPECT_EQ(OwnCanvas(before).DifferencesFrom(draw.Seen()), 0);
    EXPECT_FALSE(IsAllWhite(draw.Seen()));
    CloseAll(draw, opened);
}

TEST_F(DrawnText, ChangedFontStaysWhicheverWayTheWindowEnds) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 60, 200);
    window.SetText(entry::TextBox, "kept");
    window.SetText(entry::AngleBox, "12.5");
    EndChangeFont(window, BeginChangeFont(window), IDOK);
    window.BeginClick(entry::AbortButton);
    window.WaitUntilGone();
    Settle(draw);
    EXPECT_TRUE(WaitFor([&] { return IsAllWhite(draw.Seen()); }));
    const OpenWindow again = PressWith(draw, NormalTextOption, 100, 200);
    EXPECT_EQ(again.Text(entry::TextBox), "kept");
    EXPECT_EQ(again.Text(entry::AngleBox), "12.5");
    Exit(again, "HHHHHHHHHHHH");
    EXPECT_TRUE(WaitFor([&] { return !IsAllWhite(draw.Seen()); }));
    // Slanted upwards, it leaves its line.
    const BmpView seen = draw.Seen();
    int top = seen.Height();
    for (int y = 0; y < seen.Height() && top == seen.Height(); ++y) {
        for (int x = 0; x < seen.Width(); ++x) {
            if (!(seen.At(x, y) == White)) {
                top = y;
            }
        }
    }
    EXPECT_LT(top, 195);
    CloseAll(draw, opened);
}

TEST_F(DrawnText, ExitKeepsNeitherTextNorAngle) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 60, 200);
    window.SetText(entry::AngleBox, "90");
    Exit(window, "HHHH");
    EXPECT_TRUE(WaitFor([&] { return !IsAllWhite(draw.Seen()); }));
    const OpenWindow again = PressWith(draw, NormalTextOption, 100, 100);
    EXPECT_EQ(again.Text(entry::TextBox), "");
    EXPECT_EQ(again.Text(entry::AngleBox), "0");
    Exit(again, "");
    CloseAll(draw, opened);
}

TEST_F(DrawnText, WhatWasKeptOutlivesThePaintWindow) {
    const FreeEditWindows opened = Open();
    const DrawWindows first = OpenBlank(opened);
    const OpenWindow window = PressWith(first, NormalTextOption, 60, 200);
    window.SetText(entry::TextBox, "kept");
    window.SetText(entry::AngleBox, "45");
    EndChangeFont(window, BeginChangeFont(window), IDOK);
    Abort(window);
    ComeBack(first, opened);
    const DrawWindows second = OpenBlank(opened);
    const OpenWindow again = PressWith(second, NormalTextOption, 60, 200);
    EXPECT_EQ(again.Text(entry::TextBox), "kept");
    EXPECT_EQ(again.Text(entry::AngleBox), "45");
    Abort(again);
    CloseAll(second, opened);
}

TEST_F(DrawnText, BoxTakesTheChangedFontWithItsAngle) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 60, 200);
    window.SetText(entry::AngleBox, "90");
    EndChangeFont(window, BeginChangeFont(window), IDOK);
    const LOGFONTA font = SeenWindow(window).FontOf(window.Item(entry::TextBox));
    EXPECT_EQ(font.lfEscapement, 900);
    EXPECT_EQ(font.lfOrientation, 900);
    Abort(window);
    CloseAll(draw, opened);
}

TEST_F(DrawnText, OnlyItsTwoButtonsEndTheEntry) {
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    const OpenWindow window = PressWith(draw, NormalTextOption, 60, 200);
    Send(window.Window(), WM_CLOSE);
    Send(window.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    Send(window.Window(), WM_COMMAND, IDCANCEL, 0);
    Send(window.Window(), WM_COMMAND, IDOK, 0);
    Send(window.Window(), WM_COMMAND, MAKEWPARAM(entry::ExitButton, BN_DBLCLK), 0);
    Send(window.Window(), WM_COMMAND, MAKEWPARAM(entry::AbortButton, BN_SETFOCUS), 0);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(window.Window()) != 0; }));
    PostMessageA(window.Window(), WM_COMMAND, MAKEWPARAM(entry::ExitButton, 1), 0); // by an accelerator
    window.WaitUntilGone();
    CloseAll(draw, opened);
}

TEST_F(DrawnText, HatchesShowTheGroundBetweenTheirLinesOnceTextIsThere) {
    constexpr Rgb Ground{196, 193, 196};
    constexpr int GreenField = 121;
    const FreeEditWindows opened = Open();
    const DrawWindows draw = OpenBlank(opened);
    PutGround(draw);
    ChooseFillColor(draw, GreenField);
    Choose(draw, PatternList, 2); // horizontal lines
    // What is seen within a box of which the upper left corner lies at a place.
    const auto hatchAt = [&](int x, int y) {
        Stroke(draw, {x, y}, {x + 60, y + 60});
        EXPECT_TRUE(WaitFor([&] { return draw.Seen().At(x, y + 30) == tests::Black; }));
        const BmpView seen = draw.Seen();
        std::vector<Rgb> column;
        for (int row = y + 1; row < y + 59; ++row) {
            column.push_back(seen.At(x + 30, row));
        }
        return column;
    };
    const auto countOf = [](const std::vector<Rgb>& column, Rgb color) {
        return std::count(column.begin(), column.end(), color);
    };
    const std::vector<Rgb> before = hatchAt(20, 20);
    EXPECT_GE(countOf(before, Green), 6);
    EXPECT_EQ(countOf(before, White) + countOf(before, Green), 58);
    const int withoutText = CountOf(draw.Seen(), Green);
    Exit(PressWith(draw, NormalTextOption, 20, 220), "HHHH");
    EXPECT_TRUE(WaitFor([&] { return CountOf(draw.Seen(), Green) > withoutText + 10; }));
    draw.window.Click(SquareBoxOption);
    const std::vector<Rgb> behind = hatchAt(120, 20);
    EXPECT_GE(countOf(behind, Green), 6);
    EXPECT_EQ(countOf(behind, Ground) + countOf(behind, Green), 58);
    CloseAll(draw, opened);
}

} // namespace
