// A window of another process, worked as a person would work it.
#include "tests/windows/openwindow.h"

#include "tests/windows/inside.h"

#include <gtest/gtest.h>

#include <dlgs.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>

namespace tests {

OpenWindow::OpenWindow(HWND window, std::vector<HWND> below) : window_(window), below_(std::move(below)) {}

std::string OpenWindow::Text(int id) const { return WindowText(Item(id)); }

void OpenWindow::SetText(int id, const std::string& text) const {
    Send(Item(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void OpenWindow::Drop(const std::vector<std::string>& paths) const {
    DROPFILES header{};
    header.pFiles = sizeof header;
    std::vector<char> bytes(sizeof header);
    std::memcpy(bytes.data(), &header, sizeof header);
    for (const std::string& path : paths) {
        bytes.insert(bytes.end(), path.c_str(), path.c_str() + path.size() + 1);
    }
    bytes.push_back('\0');
    // Only memory of the program's own global heap can be read as what is dropped.
    Send(window_, WM_DROPFILES, PutInside(bytes.data(), bytes.size()), 0);
}

HWND OpenWindow::Focused() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return info.hwndFocus;
}

int OpenWindow::FocusedId() const {
    const HWND focused = Focused();
    return focused == nullptr ? 0 : GetDlgCtrlID(focused);
}

void OpenWindow::Activate() const {
    EXPECT_TRUE(WaitUntilLasting([&] {
        if (GetForegroundWindow() == window_ && Focused() != nullptr) {
            return true;
        }
        SetForegroundWindow(window_);
        return false;
    })) << "not in front";
}

HWND OpenWindow::FindDialog(HWND besides) const {
    DWORD process = 0;
    GetWindowThreadProcessId(window_, &process);
    return FindTopWindow(process, [&](HWND window) {
        return window != window_ && window != besides && WindowClass(window) == DialogClass &&
               std::find(below_.begin(), below_.end(), window) == below_.end();
    });
}

HWND OpenWindow::WaitForDialog(HWND besides) const {
    EXPECT_TRUE(WaitFor([&] { return FindDialog(besides) != nullptr; })) << "no further window";
    return FindDialog(besides);
}

OpenWindow OpenWindow::Further() const {
    std::vector<HWND> below = below_;
    below.push_back(window_);
    return OpenWindow(WaitForDialog(), std::move(below));
}

std::string OpenWindow::Answer(int button) const {
    const OpenWindow box = Further();
    if (box.Window() == nullptr) {
        return {};
    }
    constexpr int TextId = 0xFFFF;
    EXPECT_TRUE(WaitFor([&] { return box.Item(button) != nullptr && box.Item(TextId) != nullptr; }));
    const std::string said = WindowText(box.Window()) + ": " + box.Text(TextId);
    box.BeginClick(button);
    box.WaitUntilGone();
    return said;
}

void OpenWindow::WaitUntilGone() const {
    char caption[80] = ""; // which a window that does not answer can be asked for too
    GetWindowTextA(window_, caption, sizeof caption);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(window_); })) << caption << " is still open";
}

std::uint32_t OpenWindow::CallInside(const char* library, const char* function,
                                     const std::vector<std::uint32_t>& arguments) const {
    return Inside(window_).Call(library, function, arguments);
}

std::uint32_t OpenWindow::PutInside(const void* bytes, std::size_t count) const {
    return Inside(window_).Put(bytes, count);
}

void OpenWindow::GetFromInside(std::uint32_t address, void* bytes, std::size_t count) const {
    Inside(window_).Get(address, bytes, count);
}

void SetFileName(const OpenWindow& picker, const std::string& name) {
    // The box for the name is one of its own, or that of a list.
    const HWND list = picker.Item(cmb13);
    const HWND box = list != nullptr ? FindBelow(list, "Edit") : picker.Item(edt1);
    Send(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void ExpectMissingFileRefused(const OpenWindow& picker) {
    SetFileName(picker, "none.bmp");
    picker.BeginClick(IDOK);
    const OpenWindow message = picker.Further();
    EXPECT_TRUE(WaitFor([&] { return message.Item(IDOK) != nullptr; }));
    message.BeginClick(IDOK);
    message.WaitUntilGone();
    EXPECT_TRUE(IsWindow(picker.Window()));
}

} // namespace tests
