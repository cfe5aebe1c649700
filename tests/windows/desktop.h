// What a person does and sees on the desktop: waits, reads windows, presses keys, looks at the screen.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace tests {

constexpr DWORD PatienceMs = 20000;
constexpr const char* DialogClass = "#32770";

// Asks again and again until something holds; false where it does not in time. Whoever asks is named in the report of a
// test that takes too long.
bool WaitFor(const std::function<bool()>& holds, DWORD patienceMs = PatienceMs, const char* file = __builtin_FILE(),
             int line = __builtin_LINE());

// The same, but it must hold on many askings in a row: for what the display server settles in several steps.
bool WaitUntilLasting(const std::function<bool()>& holds, const char* file = __builtin_FILE(),
                      int line = __builtin_LINE());

// What a window's text is, asked across processes.
std::string WindowText(HWND window);
std::string WindowClass(HWND window);

// The visible top-level window of a process that satisfies `fits`; null where there is none.
HWND FindTopWindow(DWORD process, const std::function<bool(HWND)>& fits);

// The first window of a class anywhere below a window; null where there is none.
HWND FindBelow(HWND window, const char* className);

// A place in a window's client area, or the middle of a whole window, as a place on the screen.
POINT ScreenPointOf(HWND window, POINT client);
POINT MiddleOf(HWND window);

// A real key.
void PressKey(WORD key, bool withShift = false);

// The colour that the screen shows at a place, whichever window it belongs to. What that window has drawn is there.
COLORREF PixelAt(POINT screen);

// The same without waiting until the window has drawn it.
COLORREF PixelSoFarAt(POINT screen);

// The client area of a window as the screen shows it, as a BMP file of 32 bits a pixel. What the window has drawn is
// there.
std::string ScreenBitmapOf(HWND window);

// The whole screen as a BMP file.
void SaveScreenshot(const std::string& path);

} // namespace tests
