// A window of the running program held against what is expected of it.
#include "tests/windows/seenwindow.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace tests {

namespace {

constexpr DWORD ShownStyle = 0x10000000;
constexpr DWORD MaximizedStyle = 0x01000000;
constexpr DWORD StopStyle = 0x00010000; // a group of radio buttons keeps its stop on the checked one
constexpr DWORD DefaultButtonStyle = 1; // the focus makes one the default
constexpr DWORD TakesFilesStyle = 0x10;
constexpr DWORD ModalFrameStyle = 0x1; // which comes with the frame of the template
constexpr DWORD NotifiesNobodyStyle = 0x4;
constexpr DWORD BorderStyle = 0x00800000;
constexpr DWORD SunkenEdgeStyle = 0x200;   // what a dialog may make of a border
constexpr DWORD SunkenLabelStyle = 0x1000; // which comes with the edge below
constexpr DWORD StaticEdgeStyle = 0x20000;
constexpr DWORD ScrollBarStyle = 0x00200000; // which a drop-down list gives to the list that it opens

// What a kind of control is on the platform; `colors` is the message that asks for its colours, 0 for none.
struct ExpectedClass {
    const char* name;
    DWORD style;
    DWORD extendedStyle;
    UINT colors;
};

ExpectedClass ClassOf(ExpectedKind kind) {
    switch (kind) {
    case ExpectedKind::Label:
        return {"Static", 0x50000000, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::TextBox:
        return {"Edit", 0x50010080, 0x200, WM_CTLCOLOREDIT};
    case ExpectedKind::DigitsBox:
        return {"Edit", 0x50012080, 0x200, WM_CTLCOLOREDIT};
    case ExpectedKind::MultiLineBox:
        return {"Edit", 0x50011084, 0x200, WM_CTLCOLOREDIT};
    case ExpectedKind::PushButton:
        return {"Button", 0x50010000, 0, WM_CTLCOLORBTN};
    case ExpectedKind::CheckBox:
        return {"Button", 0x50010003, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::FirstRadioButton:
        return {"Button", 0x50020D09, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::RadioButton:
        return {"Button", 0x50000009, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::Frame:
        return {"Button", 0x50000007, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::DropDownList:
        return {"ComboBox", 0x50010003, 0, WM_CTLCOLOREDIT};
    case ExpectedKind::TrackBar:
        return {"msctls_trackbar32", 0x50010000, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::Graphic:
        return {"Static", 0x5000000D, 0, WM_CTLCOLORSTATIC};
    case ExpectedKind::PictureList:
        break;
    }
    return {"SysListView32", 0x50000000, 0, 0};
}

int DotsPerInch() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dots;
}

// The platform rounds the font of dialog units; what a window makes for itself has the remainder dropped.
int HeightOf(const ExpectedFont& font) {
    return font.face == SystemsFont.face ? -MulDiv(font.points, DotsPerInch(), 72)
                                         : -(font.points * DotsPerInch() / 72);
}

// The character set of the platform's own font is the platform's business.
std::string FontWords(const LOGFONTA& font) {
    const bool isSystems = font.lfFaceName == SystemsFont.face;
    return font.lfFaceName + (" of height " + std::to_string(font.lfHeight)) + " and weight " +
           std::to_string(font.lfWeight) + (isSystems ? "" : ", character set " + std::to_string(font.lfCharSet)) +
           (font.lfItalic != 0 ? ", italic" : "") + (font.lfUnderline != 0 ? ", underlined" : "");
}

std::string FontWords(const ExpectedFont& font) {
    LOGFONTA expected{};
    expected.lfHeight = HeightOf(font);
    expected.lfWeight = font.weight;
    expected.lfItalic = font.isItalic;
    expected.lfUnderline = font.isUnderlined;
    lstrcpynA(expected.lfFaceName, font.face.c_str(), LF_FACESIZE);
    return FontWords(expected);
}

std::string ColorWords(std::int64_t text, std::int64_t background, std::int64_t brush) {
    std::ostringstream words;
    words << std::hex << "text " << text << " on " << background << ", the rest " << brush;
    return words.str();
}

std::string ColorWords(const ExpectedControl& control, UINT question) {
    if (question == 0) {
        return "";
    }
    const auto systems =
        static_cast<std::int64_t>(GetSysColor(question == WM_CTLCOLOREDIT ? COLOR_WINDOW : COLOR_3DFACE));
    const std::int64_t background = control.background == SystemsColor ? systems : control.background;
    const std::int64_t text = control.text == SystemsColor ? GetSysColor(COLOR_WINDOWTEXT) : control.text;
    return ColorWords(text, background, background);
}

// All that is compared of a control, to be read where it differs.
std::string RowWords(const ExpectedControl& control, const std::string& className, const std::string& caption,
                     DWORD style, DWORD extendedStyle, const ExpectedPlace& place) {
    const bool hasText = control.kind == ExpectedKind::TextBox || control.kind == ExpectedKind::DropDownList;
    const bool isList = control.kind == ExpectedKind::DropDownList; // its height is that with the list open
    std::ostringstream words;
    words << control.id << " " << className << " \"" << (hasText ? "" : caption) << "\" styles " << std::hex << style
          << " and " << extendedStyle << std::dec << ", at " << place.x << ',' << place.y << " of " << place.width
          << 'x' << (isList ? 0 : place.height);
    return words.str();
}

bool HasFont(ExpectedKind kind) { return kind != ExpectedKind::TrackBar; }

std::string ExpectedRow(const ExpectedControl& control) {
    const ExpectedClass expected = ClassOf(control.kind);
    const DWORD style =
        (control.isHidden ? expected.style & ~ShownStyle : expected.style) | (control.extraStyle & ~BorderStyle);
    const ExpectedPlace from = SeenWindow::InPixels(control.place);
    return RowWords(control, expected.name, control.caption, style, expected.extendedStyle | control.extraExtendedStyle,
                    from) +
           ", " + (HasFont(control.kind) ? FontWords(control.font) : "") + ", " + ColorWords(control, expected.colors);
}

// The style of a control without what comes and goes.
DWORD LastingStyle(HWND item, ExpectedKind kind) {
    auto style = static_cast<DWORD>(GetWindowLongA(item, GWL_STYLE));
    if (kind == ExpectedKind::PushButton) {
        style &= ~DefaultButtonStyle;
    } else if (kind == ExpectedKind::DropDownList) {
        style &= ~ScrollBarStyle;
    } else if (kind == ExpectedKind::RadioButton || kind == ExpectedKind::FirstRadioButton) {
        style &= ~StopStyle;
    }
    return style;
}

// A control's rectangle relative to the window's client area, in pixels.
ExpectedPlace PlaceOf(HWND window, HWND item) {
    RECT place{};
    GetWindowRect(item, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

std::uint32_t Number(const void* handle) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

// The size of the character that dialog units are parts of: the font's mean width and its height.
SIZE UnitCharacter() {
    constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    LOGFONTA description{};
    description.lfHeight = HeightOf(SystemsFont);
    lstrcpynA(description.lfFaceName, SystemsFont.face.c_str(), LF_FACESIZE);
    const HDC screen = GetDC(nullptr);
    const HFONT font = CreateFontIndirectA(&description);
    const HGDIOBJ before = SelectObject(screen, font);
    SIZE letters{};
    GetTextExtentPoint32A(screen, Letters, sizeof Letters - 1, &letters);
    SelectObject(screen, before);
    DeleteObject(font);
    ReleaseDC(nullptr, screen);
    return {(letters.cx / 26 + 1) / 2, letters.cy};
}

} // namespace

void SeenWindow::Expect(const ExpectedWindow& expected) const {
    ExpectFrame(expected);
    HWND item = GetWindow(window_.Window(), GW_CHILD);
    for (const ExpectedControl& control : expected.controls) {
        ASSERT_NE(item, nullptr) << "no control " << control.id;
        ASSERT_EQ(GetDlgCtrlID(item), control.id) << "is out of order";
        EXPECT_EQ(Row(control, item), ExpectedRow(control));
        EXPECT_TRUE(IsWindowEnabled(item)) << control.id;
        item = GetWindow(item, GW_HWNDNEXT);
    }
    EXPECT_EQ(item, nullptr) << "there are more controls than are expected";
}

void SeenWindow::ExpectFrame(const ExpectedWindow& expected) const {
    const HWND window = window_.Window();
    EXPECT_EQ(WindowText(window), expected.caption);
    const bool isMaximized = expected.position == ExpectedPosition::Maximized;
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)),
              expected.style | ShownStyle | (isMaximized ? MaximizedStyle : 0));
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE)),
              expected.extendedStyle | ModalFrameStyle | (expected.drop == ExpectedDrop::Taken ? TakesFilesStyle : 0));
    if (!isMaximized && expected.position != ExpectedPosition::Anywhere) {
        RECT client{};
        GetClientRect(window, &client);
        const ExpectedPlace size = InPixels(expected.place);
        EXPECT_EQ(client.right, size.width);
        EXPECT_EQ(client.bottom, size.height);
    }
    const auto brush = ObjectOf<LOGBRUSH>(Ask(window, WM_CTLCOLORDLG));
    EXPECT_EQ(brush.lbColor, expected.background == SystemsColor ? GetSysColor(COLOR_3DFACE)
                                                                 : static_cast<COLORREF>(expected.background));
    ExpectPosition(expected.position);
}

void SeenWindow::ExpectPosition(ExpectedPosition position) const {
    if (position == ExpectedPosition::Anywhere) {
        return;
    }
    RECT frame{};
    GetWindowRect(window_.Window(), &frame);
    if (position == ExpectedPosition::Maximized) { // its frame lies beyond the screen
        EXPECT_LE(frame.left, 0);
        EXPECT_LE(frame.top, 0);
        EXPECT_GE(frame.right, GetSystemMetrics(SM_CXSCREEN));
        EXPECT_GE(frame.bottom, GetSystemMetrics(SM_CYSCREEN) - 80);
        return;
    }
    if (position == ExpectedPosition::TopLeftOfTheScreen) {
        EXPECT_EQ(frame.left, 0);
        EXPECT_EQ(frame.top, 0);
        return;
    }
    // Twice the distance of the middles; panels take a part of the screen.
    EXPECT_LE(std::abs(frame.left + frame.right - GetSystemMetrics(SM_CXSCREEN)), 40);
    EXPECT_LE(std::abs(frame.top + frame.bottom - GetSystemMetrics(SM_CYSCREEN)), 80);
}

std::string SeenWindow::Row(const ExpectedControl& control, HWND item) const {
    DWORD style = LastingStyle(item, control.kind);
    DWORD extendedStyle = static_cast<DWORD>(GetWindowLongA(item, GWL_EXSTYLE)) & ~NotifiesNobodyStyle;
    if ((control.extraStyle & BorderStyle) != 0) {
        EXPECT_TRUE((style & BorderStyle) != 0 || (extendedStyle & SunkenEdgeStyle) != 0) << control.id;
        style &= ~BorderStyle;
        extendedStyle &= ~SunkenEdgeStyle;
    }
    if (control.kind == ExpectedKind::Label && (control.extraStyle & SunkenLabelStyle) != 0) {
        extendedStyle &= ~(StaticEdgeStyle & ~control.extraExtendedStyle);
    }
    return RowWords(control, WindowClass(item), WindowText(item), style, extendedStyle,
                    PlaceOf(window_.Window(), item)) +
           ", " + (HasFont(control.kind) ? FontWordsOf(item) : "") + ", " +
           ColorsOf(item, ClassOf(control.kind).colors);
}

LOGFONTA SeenWindow::FontOf(HWND window) const { return ObjectOf<LOGFONTA>(Ask(window, WM_GETFONT)); }

std::string SeenWindow::FontWordsOf(HWND window) const { return FontWords(FontOf(window)); }

std::string SeenWindow::ColorsOf(HWND item, UINT question) const {
    if (question == 0) {
        return "";
    }
    const std::uint32_t context = window_.CallInside("user32.dll", "GetDC", {Number(item)});
    const std::uint32_t brush =
        window_.CallInside("user32.dll", "SendMessageA", {Number(window_.Window()), question, context, Number(item)});
    const std::uint32_t text = window_.CallInside("gdi32.dll", "GetTextColor", {context});
    const std::uint32_t background = window_.CallInside("gdi32.dll", "GetBkColor", {context});
    window_.CallInside("user32.dll", "ReleaseDC", {Number(item), context});
    return ColorWords(text, background, ObjectOf<LOGBRUSH>(brush).lbColor);
}

template <class Description> Description SeenWindow::ObjectOf(std::uint32_t handle) const {
    Description description{};
    const std::uint32_t inside = window_.PutInside(&description, sizeof description);
    EXPECT_NE(window_.CallInside("gdi32.dll", "GetObjectA", {handle, sizeof description, inside}), 0u);
    window_.GetFromInside(inside, &description, sizeof description);
    window_.CallInside("kernel32.dll", "GlobalFree", {inside});
    return description;
}

std::uint32_t SeenWindow::Ask(HWND window, UINT message, std::uint32_t argument) const {
    return window_.CallInside("user32.dll", "SendMessageA", {Number(window), message, argument, 0});
}

ExpectedPlace SeenWindow::InPixels(const ExpectedPlace& units) {
    const SIZE character = UnitCharacter();
    return {MulDiv(units.x, character.cx, 4), MulDiv(units.y, character.cy, 8), MulDiv(units.width, character.cx, 4),
            MulDiv(units.height, character.cy, 8)};
}

} // namespace tests
