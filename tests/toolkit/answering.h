// Somebody who answers the next window that the test's own thread opens, from within its loop of messages.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace tests {

class Answering {
  public:
    using Answer = std::function<void(HWND window)>;

    // Presses a button of the next message box, or calls `answer` with the next window, once it is shown. Then the
    // answering is over.
    explicit Answering(int button) : Answering([button](HWND box) { SendMessageA(box, WM_COMMAND, button, 0); }) {}
    explicit Answering(Answer answer) : answer_(std::move(answer)) {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, BetweenLooksMs, OnTimer);
    }
    ~Answering() { End(); }
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;

    // Of the message box: "TITLE: TEXT", its buttons, and the mouse pointer over it.
    std::string Said() const { return said_; }
    int Buttons() const { return buttons_; }
    HCURSOR Pointer() const { return pointer_; }

  private:
    static constexpr UINT BetweenLooksMs = 20;

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        HWND window = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&window));
        if (window != nullptr && current_ != nullptr) {
            current_->Look(window);
        }
    }

    static BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
        char name[16] = "";
        GetClassNameA(window, name, sizeof name);
        if (std::string(name) != "#32770" || !IsWindowVisible(window)) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    static std::string TextOf(HWND window) {
        char text[400] = "";
        GetWindowTextA(window, text, sizeof text);
        return text;
    }

    void Look(HWND window) {
        constexpr int MessageTextId = 0xFFFF;
        pointer_ = GetCursor();
        said_ = TextOf(window) + ": " + TextOf(GetDlgItem(window, MessageTextId));
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            char name[16] = "";
            GetClassNameA(child, name, sizeof name);
            buttons_ += std::string(name) == "Button" && IsWindowVisible(child) ? 1 : 0;
        }
        const Answer answer = answer_;
        End();
        answer(window);
    }

    void End() {
        if (current_ == this) {
            KillTimer(nullptr, timer_);
            current_ = nullptr;
        }
    }

    static inline Answering* current_ = nullptr;

    Answer answer_;
    UINT_PTR timer_ = 0;
    std::string said_;
    int buttons_ = 0;
    HCURSOR pointer_ = nullptr;
};

} // namespace tests
