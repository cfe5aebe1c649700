// What a person does and sees on the desktop: waits, reads windows, presses keys, looks at the screen.
#include "tests/windows/desktop.h"

#include "tests/support/temporaryfolder.h"
#include "tests/windows/deadline.h"
#include "tests/windows/inside.h"
#include "tests/windows/insiderequest.h"
#include "tests/windows/sending.h"

namespace tests {

namespace {

constexpr DWORD BetweenAsksMs = 15;

struct WindowSearch {
    DWORD process;
    const std::function<bool(HWND)>& fits;
    HWND found = nullptr;
};

BOOL CALLBACK TryWindow(HWND window, LPARAM argument) {
    auto& search = *reinterpret_cast<WindowSearch*>(argument);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search.process && IsWindowVisible(window) && search.fits(window)) {
        search.found = window;
    }
    return search.found == nullptr;
}

// What the program of a window has drawn may be on the screen a moment later only.
void BringToScreen(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (window != nullptr && window != GetDesktopWindow() && process != GetCurrentProcessId()) {
        Inside(window).Call(InsideHookFile, BringToScreenName, {0});
    }
}

// A part of the screen as a BMP file of 32 bits a pixel.
std::string ScreenBitmap(const RECT& part) {
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    std::string pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, '\0');
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, part.left, part.top, SRCCOPY);
    SelectObject(memory, before);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), pixels.data(), reinterpret_cast<BITMAPINFO*>(&header),
              DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof header;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    return std::string(reinterpret_cast<const char*>(&file), sizeof file) +
           std::string(reinterpret_cast<const char*>(&header), sizeof header) + pixels;
}

} // namespace

bool WaitFor(const std::function<bool()>& holds, DWORD patienceMs, const char* file, int line) {
    const Waiting waiting("what " + std::string(file) + ", line " + std::to_string(line) + ", asks for");
    for (const DWORD start = GetTickCount(); GetTickCount() - start < patienceMs && !IsTestOver();
         Sleep(BetweenAsksMs)) {
        if (holds()) {
            return true;
        }
    }
    return !IsTestOver() && holds();
}

bool WaitUntilLasting(const std::function<bool()>& holds, const char* file, int line) {
    constexpr int Lasting = 15;
    int inRow = 0;
    return WaitFor([&] { return (inRow = holds() ? inRow + 1 : 0) >= Lasting; }, PatienceMs, file, line);
}

std::string WindowText(HWND window) {
    std::string text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, '\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string WindowClass(HWND window) {
    char name[80] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

HWND FindTopWindow(DWORD process, const std::function<bool(HWND)>& fits) {
    WindowSearch search{process, fits};
    EnumWindows(TryWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FindBelow(HWND window, const char* className) {
    if (HWND direct = FindWindowExA(window, nullptr, className, nullptr)) {
        return direct;
    }
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (HWND deeper = FindBelow(child, className)) {
            return deeper;
        }
    }
    return nullptr;
}

POINT ScreenPointOf(HWND window, POINT client) {
    ClientToScreen(window, &client);
    return client;
}

POINT MiddleOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

void PressKey(WORD key, bool withShift) {
    if (withShift) {
        keybd_event(VK_SHIFT, 0, 0, 0);
    }
    keybd_event(static_cast<BYTE>(key), 0, 0, 0);
    keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
    if (withShift) {
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    }
}

COLORREF PixelAt(POINT screen) {
    BringToScreen(WindowFromPoint(screen));
    return PixelSoFarAt(screen);
}

COLORREF PixelSoFarAt(POINT screen) {
    const HDC context = GetDC(nullptr);
    const COLORREF color = GetPixel(context, screen.x, screen.y);
    ReleaseDC(nullptr, context);
    return color;
}

std::string ScreenBitmapOf(HWND window) {
    BringToScreen(window);
    RECT part{};
    GetClientRect(window, &part);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&part), 2);
    return ScreenBitmap(part);
}

void SaveScreenshot(const std::string& path) {
    WriteBytes(path, ScreenBitmap({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}));
}

} // namespace tests
