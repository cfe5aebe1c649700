// A window of the test program's own, for what is drawn and asked in process.
#pragma once

#include <windows.h>

namespace tests {

// An empty popup at the screen's top left, its sizes in pixels, shown while it lives.
class OwnWindow {
  public:
    OwnWindow(int width, int height)
        : window_(CreateWindowExA(WS_EX_TOPMOST, "static", "", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr,
                                  nullptr, GetModuleHandleA(nullptr), nullptr)) {
        UpdateWindow(window_);
    }
    ~OwnWindow() { DestroyWindow(window_); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    HWND Handle() const { return window_; }

    COLORREF PixelAt(int x, int y) const {
        const HDC context = GetDC(window_);
        const COLORREF color = GetPixel(context, x, y);
        ReleaseDC(window_, context);
        return color;
    }

  private:
    HWND window_;
};

} // namespace tests
