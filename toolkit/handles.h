// Handles of the platform that free themselves.
#pragma once

#include <windows.h>

#include <memory>
#include <utility>

namespace lumbrix {

// Owns one handle; `Free` is called with it unless it is null.
template <class Handle, auto Free> class Owned {
  public:
    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    ~Owned() { Reset(); }
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

    // Gives the handle to somebody who frees it.
    Handle Release() { return std::exchange(handle_, nullptr); }

    void Reset() {
        if (handle_ != nullptr) {
            Free(std::exchange(handle_, nullptr));
        }
    }

  private:
    Handle handle_ = nullptr;
};

using OwnedBrush = Owned<HBRUSH, DeleteObject>;
using OwnedBitmap = Owned<HBITMAP, DeleteObject>;
using OwnedContext = Owned<HDC, DeleteDC>; // one that was created
using OwnedFont = Owned<HFONT, DeleteObject>;
using OwnedPen = Owned<HPEN, DeleteObject>;

using OwnedFile = Owned<HANDLE, CloseHandle>;
using OwnedModule = Owned<HMODULE, FreeLibrary>;

struct ReleaseInterface {
    template <class Interface> void operator()(Interface* interface_) const { interface_->Release(); }
};

// Owns one reference to an object of COM.
template <class Interface> using OwnedInterface = std::unique_ptr<Interface, ReleaseInterface>;

// The device context of a window, or of the screen for null.
class WindowContext {
  public:
    explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
    ~WindowContext() { ReleaseDC(window_, context_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    HDC Get() const { return context_; }

  private:
    HWND window_;
    HDC context_;
};

// Has an object selected in a device context, and the one before again behind it.
class SelectedObject {
  public:
    SelectedObject(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
    ~SelectedObject() { SelectObject(context_, before_); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

  private:
    HDC context_;
    HGDIOBJ before_;
};

} // namespace lumbrix
