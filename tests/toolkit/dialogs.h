// Dialogs of the test's own, and working off messages while something is waited for.
#pragma once

#include "toolkit/dialog.h"

#include <functional>
#include <vector>

namespace tests {

// Works off what is in line until something holds; false where it does not in time.
inline bool WorkOffUntil(const std::function<bool()>& holds, DWORD patienceMs = 5000) {
    for (const DWORD start = GetTickCount(); GetTickCount() - start < patienceMs;) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        if (holds()) {
            return true;
        }
        Sleep(1);
    }
    return holds();
}

inline void WorkOffFor(DWORD milliseconds) {
    WorkOffUntil([] { return false; }, milliseconds);
}

// Tells what happens to it.
class TestDialog : public lumbrix::Dialog {
  public:
    using Dialog::Dialog;

    // Modeless, shown and drawn.
    bool Open() {
        if (!OpenModeless(nullptr)) {
            return false;
        }
        SetWindowPos(Handle(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
        RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        WorkOffFor(20);
        return true;
    }

    void Start(int timer, UINT milliseconds) { StartTimer(timer, milliseconds); }
    void Stop(int timer) { StopTimer(timer); }

    // What a control's client area shows.
    COLORREF ShownAt(int id, int x, int y) const {
        const lumbrix::WindowContext context(Item(id));
        return GetPixel(context.Get(), x, y);
    }

    bool Shows(int id, COLORREF color) const {
        RECT client{};
        GetClientRect(Item(id), &client);
        for (int y = 0; y < client.bottom; ++y) {
            for (int x = 0; x < client.right; ++x) {
                if (ShownAt(id, x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    }

    std::function<void()> onStart;
    std::function<void()> onTimer;
    std::function<void(int, HDC, const RECT&)> onDraw;
    std::function<std::optional<LRESULT>(UINT, WPARAM, LPARAM)> onMessage;
    int firstFocus = 0;
    int commands = 0;
    int destroyed = 0;
    std::vector<int> timers;

  private:
    void OnStart() override {
        if (onStart) {
            onStart();
        }
    }
    int FirstFocus() const override { return firstFocus; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override {
        return onMessage ? onMessage(message, wordParameter, longParameter) : std::nullopt;
    }
    void OnCommand(int, int) override { ++commands; }
    void OnTimer(int timer) override {
        timers.push_back(timer);
        if (onTimer) {
            onTimer();
        }
    }
    void OnDraw(int id, HDC context, const RECT& area) override {
        if (onDraw) {
            onDraw(id, context, area);
        }
    }
    void OnDestroy() override { ++destroyed; }
};

} // namespace tests
