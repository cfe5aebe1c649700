// A user who is not there: what was said, and whether there was something to wait for.
#pragma once

#include "toolkit/messages.h"

#include <functional>
#include <string>
#include <vector>

namespace tests {

class FakeMessages : public lumbrix::Messages {
  public:
    void Show(const std::string& text, const std::string& title) override {
        said.push_back(title + ": " + text);
        if (onShow) {
            onShow();
        }
    }

    void ShowTechnical(const std::string& text) override { said.push_back(": " + text); }

    bool Confirm(const std::string& text, const std::string& title) override {
        said.push_back(title + "? " + text);
        return answersYes;
    }

    void BeginWaiting() override {
        ++waits;
        ++begun;
        if (onWait) {
            onWait();
        }
    }
    void EndWaiting() override { --waits; }

    // Notes whether there is something to wait for at this moment.
    void LookAtPointer() { pointer.push_back(waits > 0 ? "waits" : "arrow"); }

    bool answersYes = true;
    std::function<void()> onShow;
    std::function<void()> onWait; // at the beginning of each

    std::vector<std::string> said; // "TITLE: TEXT", and "TITLE? TEXT" for a question
    std::vector<std::string> pointer;
    int waits = 0; // that go on
    int begun = 0;
};

} // namespace tests
