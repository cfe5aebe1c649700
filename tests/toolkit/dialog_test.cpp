// Windows made from layouts, in the test's own process.
#include "toolkit/dialog.h"

#include "tests/toolkit/dialogs.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace {

using namespace lumbrix;
using namespace tests;

enum Id {
    ALabel = 11,
    AText,
    ADigits,
    AMultiLine,
    AList,
    ATrackBar,
    AGraphic,
    AButtonLabel,
    ASlanted,
    AColored,
};

constexpr WindowFont Fonts[] = {{"Arial", 10, 400}, {"Arial", 12, 700, FontSlant::Italic, FontLines::Underline}};

OwnedLayout EveryKind() {
    OwnedLayout layout;
    layout.caption = std::string("made ") + "at run time";
    layout.width = 200;
    layout.height = 160;
    layout.style = FixedDialog;
    layout.background = Cyan;
    layout.fonts.assign(std::begin(Fonts), std::end(Fonts));
    layout.controls = {
        {ALabel, ControlKind::Label, "label", 5, 5, 50, 10},
        {AText, ControlKind::TextBox, "text", 5, 20, 50, 13, NoFont},
        {ADigits, ControlKind::DigitsBox, "", 5, 35, 50, 13, NoFont},
        {AMultiLine, ControlKind::MultiLineBox, "", 5, 50, 90, 30, NoFont},
        {AList, ControlKind::DropDownList, "", 100, 5, 60, 100, NoFont},
        {ATrackBar, ControlKind::TrackBar, "", 100, 30, 80, 20, NoFont, ColorOf(128, 160, 200), ShowsSelectedRange,
         SystemColor, SeeThrough},
        {AGraphic, ControlKind::Graphic, "", 100, 60, 40, 20, NoFont, SystemColor, LabelTakesMouse, SystemColor,
         ClientEdge},
        {AButtonLabel, ControlKind::Label, "Save", 100, 90, 40, 20, 1, ColorOf(128, 128, 128), LabelAsButton,
         ColorOf(255, 255, 255), StaticEdge},
        {ASlanted, ControlKind::Label, "slanted", 5, 90, 50, 12, 1},
        {AColored, ControlKind::Label, "M", 5, 110, 50, 12, 0, SystemColor, 0, ColorOf(255, 0, 255)},
    };
    return layout;
}

class DialogWindow : public testing::Test {
  protected:
    DialogWindow() { EXPECT_TRUE(dialog_.Open()); }

    LONG StyleOf(int id) const { return GetWindowLongA(dialog_.Item(id), GWL_STYLE); }
    LONG ExtendedStyleOf(int id) const { return GetWindowLongA(dialog_.Item(id), GWL_EXSTYLE); }
    bool HasStyle(int id, LONG style) const { return (StyleOf(id) & style) == style; }
    bool HasExtendedStyle(int id, LONG style) const { return (ExtendedStyleOf(id) & style) == style; }

    std::string ClassOf(int id) const {
        char name[40] = "";
        GetClassNameA(dialog_.Item(id), name, sizeof name);
        CharLowerA(name);
        return name;
    }

    LOGFONTA FontOf(int id) const {
        LOGFONTA description{};
        const auto font = reinterpret_cast<HFONT>(SendMessageA(dialog_.Item(id), WM_GETFONT, 0, 0));
        GetObjectA(font, sizeof description, &description);
        return description;
    }

    TestDialog dialog_{EveryKind()};
};

TEST_F(DialogWindow, OwnsALayoutThatIsGoneByNow) {
    char caption[40] = "";
    GetWindowTextA(dialog_.Handle(), caption, sizeof caption);
    EXPECT_STREQ(caption, "made at run time");
    EXPECT_EQ(dialog_.TextOf(ALabel), "label");
    EXPECT_EQ(dialog_.Row(AButtonLabel).caption, "Save");
    EXPECT_EQ(dialog_.Row(AButtonLabel).width, 40);
}

TEST_F(DialogWindow, ControlsAreOfTheirKinds) {
    EXPECT_EQ(ClassOf(AText), "edit");
    EXPECT_FALSE(HasStyle(AText, ES_NUMBER));
    EXPECT_EQ(ClassOf(ADigits), "edit");
    EXPECT_TRUE(HasStyle(ADigits, WS_TABSTOP | ES_AUTOHSCROLL | ES_NUMBER));
    EXPECT_TRUE(HasExtendedStyle(ADigits, WS_EX_CLIENTEDGE));
    EXPECT_EQ(ClassOf(AMultiLine), "edit");
    EXPECT_TRUE(HasStyle(AMultiLine, WS_TABSTOP | ES_AUTOHSCROLL | ES_MULTILINE | ES_WANTRETURN));
    EXPECT_TRUE(HasExtendedStyle(AMultiLine, WS_EX_CLIENTEDGE));
    EXPECT_EQ(ClassOf(AList), "combobox");
    EXPECT_TRUE(HasStyle(AList, WS_TABSTOP | CBS_DROPDOWNLIST));
    EXPECT_EQ(ClassOf(ATrackBar), "msctls_trackbar32");
    EXPECT_TRUE(HasStyle(ATrackBar, WS_TABSTOP | TBS_ENABLESELRANGE));
    EXPECT_TRUE(HasExtendedStyle(ATrackBar, WS_EX_TRANSPARENT));
    EXPECT_EQ(ClassOf(AGraphic), "static");
    EXPECT_TRUE(HasStyle(AGraphic, SS_OWNERDRAW | SS_NOTIFY));
    EXPECT_TRUE(HasExtendedStyle(AGraphic, WS_EX_CLIENTEDGE));
    EXPECT_EQ(ClassOf(AButtonLabel), "static");
    EXPECT_TRUE(HasStyle(AButtonLabel, SS_CENTER | SS_CENTERIMAGE | SS_SUNKEN));
    EXPECT_TRUE(HasExtendedStyle(AButtonLabel, WS_EX_STATICEDGE));
}

TEST_F(DialogWindow, FontsMaySlantAndBeUnderlined) {
    const LOGFONTA plain = FontOf(ALabel);
    EXPECT_EQ(plain.lfWeight, 400);
    EXPECT_EQ(plain.lfItalic, 0);
    EXPECT_EQ(plain.lfUnderline, 0);
    const LOGFONTA slanted = FontOf(ASlanted);
    EXPECT_STREQ(slanted.lfFaceName, "Arial");
    EXPECT_EQ(slanted.lfWeight, 700);
    EXPECT_NE(slanted.lfItalic, 0);
    EXPECT_NE(slanted.lfUnderline, 0);
}

TEST_F(DialogWindow, TrackBarTakesARangeAndAPosition) {
    SendMessageA(dialog_.Item(ATrackBar), TBM_SETRANGE, TRUE, MAKELPARAM(0, 500));
    SendMessageA(dialog_.Item(ATrackBar), TBM_SETPOS, TRUE, 100);
    EXPECT_EQ(SendMessageA(dialog_.Item(ATrackBar), TBM_GETPOS, 0, 0), 100);
}

TEST_F(DialogWindow, ListHasItemsOfWhichOneIsSelected) {
    EXPECT_EQ(dialog_.SelectedListItem(AList), -1);
    for (const char* item : {"Hollow", "Solid", "Dotted"}) {
        dialog_.AddListItem(AList, item);
    }
    dialog_.SelectListItem(AList, 1);
    EXPECT_EQ(dialog_.SelectedListItem(AList), 1);
    EXPECT_EQ(dialog_.TextOf(AList), "Solid");
    EXPECT_EQ(SendMessageA(dialog_.Item(AList), CB_GETCOUNT, 0, 0), 3);
}

TEST_F(DialogWindow, ControlsAreEnabledAndMoved) {
    dialog_.Enable(AList, false);
    EXPECT_FALSE(IsWindowEnabled(dialog_.Item(AList)));
    dialog_.Enable(AList, true);
    EXPECT_TRUE(IsWindowEnabled(dialog_.Item(AList)));
    dialog_.MoveControl(ALabel, 60, 70, 20, 30);
    RECT place{};
    GetWindowRect(dialog_.Item(ALabel), &place);
    MapWindowPoints(nullptr, dialog_.Handle(), reinterpret_cast<POINT*>(&place), 2);
    const RECT expected = dialog_.InPixels({60, 70, 80, 100});
    EXPECT_EQ(place.left, expected.left);
    EXPECT_EQ(place.top, expected.top);
    EXPECT_NEAR(place.right, expected.right, 1);
    EXPECT_NEAR(place.bottom, expected.bottom, 1);
}

TEST_F(DialogWindow, ColorsOfAControlChangeAndAreSeenAtOnce) {
    EXPECT_EQ(dialog_.ShownAt(AButtonLabel, 4, 4), ColorOf(128, 128, 128));
    dialog_.SetColors(AButtonLabel, Red, ColorOf(87, 87, 87));
    EXPECT_EQ(dialog_.ShownAt(AButtonLabel, 4, 4), ColorOf(87, 87, 87));
    EXPECT_EQ(dialog_.Row(AButtonLabel).text, Red);
    EXPECT_TRUE(dialog_.Shows(AButtonLabel, Red));
}

TEST_F(DialogWindow, OneOfTheTwoColorsMayChangeAlone) {
    dialog_.SetColors(AButtonLabel, ColorOf(255, 255, 255), ColorOf(87, 87, 87));
    EXPECT_EQ(dialog_.ShownAt(AButtonLabel, 4, 4), ColorOf(87, 87, 87));
    dialog_.SetColors(AButtonLabel, Red, ColorOf(87, 87, 87));
    EXPECT_TRUE(dialog_.Shows(AButtonLabel, Red));
}

TEST_F(DialogWindow, TextMayBeColoredOnTheSystemsBackground) {
    EXPECT_EQ(dialog_.ShownAt(AColored, 1, 1), GetSysColor(COLOR_BTNFACE));
    EXPECT_TRUE(dialog_.Shows(AColored, ColorOf(255, 0, 255)));
}

TEST_F(DialogWindow, GraphicControlIsDrawnByTheWindow) {
    dialog_.onDraw = [](int id, HDC context, const RECT& area) {
        EXPECT_EQ(id, AGraphic);
        const OwnedBrush brush(CreateSolidBrush(RGB(1, 200, 3)));
        FillRect(context, &area, brush.Get());
    };
    RedrawWindow(dialog_.Item(AGraphic), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(dialog_.ShownAt(AGraphic, 5, 5), ColorOf(1, 200, 3));
}

TEST_F(DialogWindow, PixelsBecomeUnitsRoundedDown) {
    const RECT many = dialog_.InPixels({0, 0, 1024, 1024});
    EXPECT_EQ(PixelsOf1024Units(), (PixelSize{many.right, many.bottom}));
    EXPECT_EQ(dialog_.InUnits({many.right, many.bottom}), (PixelSize{1024, 1024}));
    EXPECT_EQ(dialog_.InUnits({many.right - 1, many.bottom - 1}), (PixelSize{1023, 1023}));
}

TEST_F(DialogWindow, AnyMessageMayBeAnsweredBeforeTheHandlers) {
    constexpr UINT Question = WM_APP + 7;
    EXPECT_EQ(SendMessageA(dialog_.Handle(), Question, 1, 2), 0);
    dialog_.onMessage = [](UINT message, WPARAM wordParameter, LPARAM longParameter) -> std::optional<LRESULT> {
        if (message == Question) {
            return static_cast<LRESULT>(wordParameter) * 100 + longParameter;
        }
        return message == WM_COMMAND ? std::optional<LRESULT>(0) : std::nullopt;
    };
    dialog_.commands = 0;
    EXPECT_EQ(SendMessageA(dialog_.Handle(), Question, 4, 2), 402);
    SendMessageA(dialog_.Handle(), WM_COMMAND, AText, 0);
    EXPECT_EQ(dialog_.commands, 0) << "it goes no further";
    dialog_.onMessage = nullptr;
    SendMessageA(dialog_.Handle(), WM_COMMAND, AText, 0);
    EXPECT_EQ(dialog_.commands, 1);
}

TEST_F(DialogWindow, AnsweredColorIsTheBrush) {
    const OwnedBrush green(CreateSolidBrush(RGB(0, 255, 0)));
    dialog_.onMessage = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return message == WM_CTLCOLORDLG ? std::optional(reinterpret_cast<LRESULT>(green.Get())) : std::nullopt;
    };
    EXPECT_EQ(SendMessageA(dialog_.Handle(), WM_CTLCOLORDLG, 0, 0), reinterpret_cast<LRESULT>(green.Get()));
}

// The platform takes the answers to these from a dialog procedure itself.
TEST_F(DialogWindow, SomeMessagesAreAnsweredByTheProcedureItself) {
    constexpr LRESULT Answer = 0x1234;
    dialog_.onMessage = [](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return Answer; };
    for (const UINT message : {WM_CTLCOLORMSGBOX, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC, WM_COMPAREITEM, WM_VKEYTOITEM,
                               WM_CHARTOITEM, WM_QUERYDRAGICON}) {
        EXPECT_EQ(SendMessageA(dialog_.Handle(), message, 0, 0), Answer) << message;
    }
    dialog_.onMessage = nullptr;
}

TEST_F(DialogWindow, PlatformGoesOnBehindAnException) {
    dialog_.onMessage = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_SETTEXT) {
            throw 1;
        }
        return std::nullopt;
    };
    SetWindowTextA(dialog_.Handle(), "other");
    char caption[40] = "";
    GetWindowTextA(dialog_.Handle(), caption, sizeof caption);
    EXPECT_STREQ(caption, "other");
}

TEST_F(DialogWindow, ExceptionEndsInIt) {
    dialog_.onMessage = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            throw 1;
        }
        return std::nullopt;
    };
    EXPECT_EQ(SendMessageA(dialog_.Handle(), WM_APP, 0, 0), 0);
}

TEST_F(DialogWindow, TimerFiresUntilItIsStopped) {
    constexpr int Timer = 2002;
    dialog_.Start(Timer, 10);
    EXPECT_TRUE(WorkOffUntil([&] { return dialog_.timers.size() >= 3; }));
    EXPECT_EQ(dialog_.timers.back(), Timer);
    dialog_.Stop(Timer);
    WorkOffFor(30);
    const std::size_t fired = dialog_.timers.size();
    WorkOffFor(60);
    EXPECT_EQ(dialog_.timers.size(), fired);
}

TEST_F(DialogWindow, ModelessOneStandsAboveItsOwnerAndEndsWithIt) {
    OwnedLayout bare;
    bare.width = 20;
    bare.height = 10;
    bare.style = BareWindow;
    bare.background = ColorOf(255, 255, 255);
    TestDialog canvas(bare);
    ASSERT_TRUE(canvas.OpenModeless(dialog_.Handle()));
    EXPECT_EQ(GetWindow(canvas.Handle(), GW_OWNER), dialog_.Handle());
    EXPECT_TRUE(IsWindowEnabled(dialog_.Handle()));
    EXPECT_TRUE(IsWindowVisible(canvas.Handle()));
    EXPECT_EQ(GetWindowLongA(canvas.Handle(), GWL_STYLE) & (WS_CAPTION | WS_POPUP), static_cast<LONG>(WS_POPUP));
    RECT client{};
    GetClientRect(canvas.Handle(), &client);
    const RECT expected = canvas.InPixels({0, 0, 20, 10});
    EXPECT_EQ(client.right, expected.right);
    EXPECT_EQ(client.bottom, expected.bottom);
    dialog_.End();
    EXPECT_EQ(dialog_.Handle(), nullptr);
    EXPECT_EQ(canvas.Handle(), nullptr);
}

TEST_F(DialogWindow, ModelessOneEndsWithItsObject) {
    HWND window = nullptr;
    {
        TestDialog canvas(EveryKind());
        ASSERT_TRUE(canvas.OpenModeless(nullptr));
        window = canvas.Handle();
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST(DialogObject, SetsTheFirstFontOnTheWindowBeforeTheControls) {
    TestDialog dialog(EveryKind());
    const auto fontOfLabel = [&] {
        return reinterpret_cast<HFONT>(SendMessageA(dialog.Item(ALabel), WM_GETFONT, 0, 0));
    };
    std::vector<HFONT> fonts;
    dialog.onMessage = [&](UINT message, WPARAM wordParameter, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_SETFONT) {
            fonts.push_back(reinterpret_cast<HFONT>(wordParameter));
            EXPECT_NE(fontOfLabel(), fonts.back()) << "the label has it already";
        }
        return std::nullopt;
    };
    ASSERT_TRUE(dialog.OpenModeless(nullptr));
    ASSERT_EQ(fonts.size(), 1u);
    EXPECT_EQ(fontOfLabel(), fonts[0]); // whose row names the first font
}

TEST(DialogObject, TakesItsFontsAndBrushesWithIt) {
    std::vector<HGDIOBJ> objects;
    {
        TestDialog dialog(EveryKind());
        ASSERT_TRUE(dialog.OpenModeless(nullptr));
        const auto ask = [&](HWND window, UINT message) {
            objects.push_back(reinterpret_cast<HGDIOBJ>(SendMessageA(window, message, 0, 0)));
            return GetObjectType(objects.back());
        };
        EXPECT_EQ(ask(dialog.Item(ALabel), WM_GETFONT), static_cast<DWORD>(OBJ_FONT));
        EXPECT_EQ(ask(dialog.Item(ASlanted), WM_GETFONT), static_cast<DWORD>(OBJ_FONT));
        EXPECT_EQ(ask(dialog.Handle(), WM_CTLCOLORDLG), static_cast<DWORD>(OBJ_BRUSH));
    }
    for (const HGDIOBJ object : objects) {
        EXPECT_EQ(GetObjectType(object), 0u);
    }
}

TEST_F(DialogWindow, CloseBoxOfAModelessOneEndsIt) {
    TestDialog canvas(EveryKind());
    ASSERT_TRUE(canvas.OpenModeless(nullptr));
    SendMessageA(canvas.Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(canvas.Handle(), nullptr);
    EXPECT_EQ(canvas.destroyed, 1);
    ASSERT_TRUE(canvas.OpenModeless(nullptr)) << "it may be opened again";
}

TEST(ModalDialog, GivesBackItsEndValue) {
    TestDialog dialog(EveryKind());
    dialog.onStart = [&] { dialog.Start(1, 10); };
    dialog.onTimer = [&] { dialog.End(17); };
    EXPECT_EQ(dialog.RunModal(nullptr), 17);
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST(ModalDialog, KeyboardBeginsWhereItIsTold) {
    for (const int first : {0, static_cast<int>(ADigits)}) {
        TestDialog dialog(EveryKind());
        dialog.firstFocus = first;
        int focused = 0;
        dialog.onStart = [&] { dialog.Start(1, 10); };
        dialog.onTimer = [&] {
            focused = GetDlgCtrlID(GetFocus());
            dialog.End();
        };
        dialog.RunModal(nullptr);
        EXPECT_EQ(focused, first == 0 ? static_cast<int>(AText) : first);
    }
}

} // namespace
