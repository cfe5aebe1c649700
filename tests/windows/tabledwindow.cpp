// A window of the running program held against its table.
#include "tests/windows/tabledwindow.h"

#include "tests/windows/desktop.h"

#include <gtest/gtest.h>

namespace tests {

namespace {

using namespace lumbrix;

std::uint32_t AsNumber(HWND window) { return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window)); }

bool HasFamilyStyle(const Control& control, LONG style) {
    const LONG kind = style & BS_TYPEMASK;
    switch (control.kind) {
    case ControlKind::PushButton:
        return kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON; // the focus makes one the default
    case ControlKind::CheckBox:
        return kind == BS_AUTOCHECKBOX;
    case ControlKind::RadioButton:
        return kind == BS_AUTORADIOBUTTON;
    case ControlKind::Frame:
        return kind == BS_GROUPBOX;
    default:
        return true;
    }
}

const char* ClassOf(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
        return "Static";
    case ControlKind::TextBox:
        return "Edit";
    case ControlKind::PictureList:
        return "SysListView32";
    default:
        return "Button";
    }
}

bool TakesFocus(ControlKind kind) {
    return kind != ControlKind::Label && kind != ControlKind::Frame && kind != ControlKind::PictureList;
}

void ExpectRectangle(const RECT& seen, const RECT& expected, int id) {
    EXPECT_EQ(seen.left, expected.left) << id;
    EXPECT_EQ(seen.top, expected.top) << id;
    EXPECT_EQ(seen.right, expected.right) << id;
    EXPECT_EQ(seen.bottom, expected.bottom) << id;
}

} // namespace

void TabledWindow::ExpectControls(std::span<const Control> controls) const {
    HWND next = GetWindow(window_.Window(), GW_CHILD);
    for (const Control& control : controls) {
        const HWND item = window_.Item(control.id);
        ASSERT_NE(item, nullptr) << control.id;
        EXPECT_EQ(item, next) << control.id << " is out of order";
        next = GetWindow(item, GW_HWNDNEXT);
        ExpectControl(control, item);
    }
    EXPECT_EQ(next, nullptr) << "there are more controls than are tabled";
}

void TabledWindow::ExpectControl(const Control& control, HWND item) const {
    EXPECT_EQ(WindowClass(item), ClassOf(control.kind)) << control.id;
    const bool isBox = control.kind == ControlKind::TextBox;
    if (!isBox) {
        EXPECT_EQ(WindowText(item), control.caption) << control.id;
    }
    const LONG style = GetWindowLongA(item, GWL_STYLE);
    EXPECT_TRUE(HasFamilyStyle(control, style)) << control.id;
    EXPECT_TRUE(IsWindowEnabled(item)) << control.id;
    if (control.kind != ControlKind::RadioButton) { // a group keeps its stop on the checked one
        EXPECT_EQ((style & WS_TABSTOP) != 0, TakesFocus(control.kind)) << control.id;
    }
    EXPECT_EQ((style & WS_GROUP) != 0, (control.extraStyle & StartsGroup) != 0) << control.id;
    EXPECT_EQ((GetWindowLongA(item, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0, isBox) << control.id;
    const RECT size = InPixels({control.x, control.y, control.width, control.height});
    ExpectRectangle(PlaceOf(item), {size.left, size.top, size.left + size.right, size.top + size.bottom}, control.id);
}

void TabledWindow::ExpectFrame(const WindowLayout& layout) const {
    EXPECT_EQ(WindowText(window_.Window()), layout.caption);
    ExpectSize(layout.width, layout.height);
    RECT frame{};
    GetWindowRect(window_.Window(), &frame);
    EXPECT_NEAR((frame.left + frame.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2, 20);
    EXPECT_NEAR((frame.top + frame.bottom) / 2, GetSystemMetrics(SM_CYSCREEN) / 2, 40);
}

void TabledWindow::ExpectSize(int width, int height) const {
    RECT client{};
    GetClientRect(window_.Window(), &client);
    ExpectRectangle(client, InPixels({0, 0, width, height}), 0);
}

LOGFONTA TabledWindow::FontOf(int id) const {
    const std::uint32_t font = Ask(window_.Item(id), WM_GETFONT);
    LOGFONTA description{};
    const std::uint32_t inside = window_.PutInside(&description, sizeof description);
    EXPECT_NE(window_.CallInside("gdi32.dll", "GetObjectA", {font, sizeof description, inside}), 0u);
    window_.GetFromInside(inside, &description, sizeof description);
    return description;
}

std::uint32_t TabledWindow::Ask(HWND window, UINT message, std::uint32_t argument) const {
    return window_.CallInside("user32.dll", "SendMessageA", {AsNumber(window), message, argument, 0});
}

RECT TabledWindow::PlaceOf(HWND item) const {
    RECT place{};
    GetWindowRect(item, &place);
    MapWindowPoints(nullptr, window_.Window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

RECT TabledWindow::InPixels(const RECT& units) const {
    constexpr RECT OneCharacter{0, 0, 4, 8};
    const std::uint32_t inside = window_.PutInside(&OneCharacter, sizeof OneCharacter);
    EXPECT_NE(window_.CallInside("user32.dll", "MapDialogRect", {AsNumber(window_.Window()), inside}), 0u);
    RECT base{};
    window_.GetFromInside(inside, &base, sizeof base);
    return {MulDiv(units.left, base.right, 4), MulDiv(units.top, base.bottom, 8), MulDiv(units.right, base.right, 4),
            MulDiv(units.bottom, base.bottom, 8)};
}

} // namespace tests
