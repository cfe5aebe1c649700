// Somebody who works the windows that the test's own thread opens, from within their loops of messages.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>

namespace tests {

// What is done in a window with this caption once it is there: again and again, until it says that it is done. What
// opens a further window must be posted, and that window comes with a step of its own.
struct Visit {
    std::string caption;
    std::function<bool(HWND window)> work;
};

class Visitor {
  public:
    explicit Visitor(std::deque<Visit> visits) : visits_(std::move(visits)) {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
    }
    ~Visitor() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    bool IsDone() const { return visits_.empty(); }

  private:
    struct Search {
        const std::string& caption;
        HWND found = nullptr;
    };

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current_ != nullptr && !current_->isWorking_) {
            current_->Work();
        }
    }

    static BOOL CALLBACK Look(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<Search*>(parameter);
        char text[64] = "";
        GetWindowTextA(window, text, sizeof text);
        if (IsWindowVisible(window) && search.caption == text) {
            search.found = window;
        }
        return search.found == nullptr;
    }

    void Work() {
        if (visits_.empty()) {
            return;
        }
        Search search{visits_.front().caption};
        EnumThreadWindows(GetCurrentThreadId(), Look, reinterpret_cast<LPARAM>(&search));
        isWorking_ = true;
        if (search.found != nullptr && visits_.front().work(search.found)) {
            visits_.pop_front();
        }
        isWorking_ = false;
    }

    static inline Visitor* current_ = nullptr;

    std::deque<Visit> visits_;
    UINT_PTR timer_ = 0;
    bool isWorking_ = false;
};

} // namespace tests
