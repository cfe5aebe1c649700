// A section of 32 bits a pixel in a memory context, and a window that it is copied to.
#include "bench/surface.h"

#include "bench/library.h"

#include <windows.h>

namespace bench {

namespace {

class WindowSurface : public Surface {
  public:
    WindowSurface() {
        window_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, Width, Height, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
        screen_ = GetDC(window_);
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, Width, -Height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        memory_ = CreateCompatibleDC(screen_);
        void* pixels = nullptr;
        section_ = CreateDIBSection(memory_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        before_ = SelectObject(memory_, section_);
    }

    ~WindowSurface() override {
        SelectObject(memory_, before_);
        DeleteObject(section_);
        DeleteDC(memory_);
        ReleaseDC(window_, screen_);
        DestroyWindow(window_);
    }

    bool IsComplete() const { return window_ != nullptr && section_ != nullptr; }

    void Clear() override { PatBlt(memory_, 0, 0, Width, Height, WHITENESS); }

    GpGraphics* Begin() override {
        GpGraphics* graphics = nullptr;
        Call("GdipCreateFromHDC", memory_, &graphics);
        return graphics;
    }

    void Show() override {
        BitBlt(screen_, 0, 0, Width, Height, memory_, 0, 0, SRCCOPY);
        GdiFlush();
    }

  private:
    HWND window_ = nullptr;
    HDC screen_ = nullptr;
    HDC memory_ = nullptr;
    HBITMAP section_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

} // namespace

std::unique_ptr<Surface> Surface::Make() {
    auto surface = std::make_unique<WindowSurface>();
    return surface->IsComplete() ? std::move(surface) : nullptr;
}

} // namespace bench
