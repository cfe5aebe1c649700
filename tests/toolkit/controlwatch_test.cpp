// Standing before a control.
#include "toolkit/controlwatch.h"

#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr UINT Asked = WM_APP + 1;
constexpr UINT Thrown = WM_APP + 2;

class Watch : public ControlWatch {
  public:
    explicit Watch(LRESULT answer) : answer_(answer) {}

    int seen = 0;

  private:
    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override {
        if (message == Thrown) {
            throw std::runtime_error("within a window procedure");
        }
        if (message == Asked) {
            ++seen;
            return answer_ + PassOn(message, wordParameter, longParameter);
        }
        return PassOn(message, wordParameter, longParameter);
    }

    LRESULT answer_;
};

LRESULT Ask(const OwnWindow& window) { return SendMessageA(window.Handle(), Asked, 0, 0); }

TEST(ControlWatch, AnswersInPlaceOfTheControlWhileItLives) {
    const OwnWindow window(20, 20);
    EXPECT_EQ(Ask(window), 0);
    {
        Watch watch(5);
        watch.Attach(window.Handle());
        EXPECT_EQ(watch.Watched(), window.Handle());
        EXPECT_EQ(Ask(window), 5);
    }
    EXPECT_EQ(Ask(window), 0);
}

TEST(ControlWatch, SeveralStandBeforeOneControlAndMayLeaveInAnyOrder) {
    const OwnWindow window(20, 20);
    Watch first(1);
    Watch second(10);
    first.Attach(window.Handle());
    second.Attach(window.Handle());
    EXPECT_EQ(Ask(window), 11);
    first.Detach();
    EXPECT_EQ(first.Watched(), nullptr);
    EXPECT_EQ(Ask(window), 10);
}

TEST(ControlWatch, LeavesOneControlForAnother) {
    const OwnWindow one(20, 20);
    const OwnWindow other(20, 20);
    Watch watch(3);
    watch.Attach(one.Handle());
    watch.Attach(other.Handle());
    EXPECT_EQ(Ask(one), 0);
    EXPECT_EQ(Ask(other), 3);
}

TEST(ControlWatch, OutlivesItsControl) {
    Watch watch(3);
    {
        const OwnWindow window(20, 20);
        watch.Attach(window.Handle());
    }
    EXPECT_EQ(watch.Watched(), nullptr);
}

TEST(ControlWatch, ExceptionEndsInIt) {
    const OwnWindow window(20, 20);
    Watch watch(3);
    watch.Attach(window.Handle());
    EXPECT_EQ(SendMessageA(window.Handle(), Thrown, 0, 0), 0);
    EXPECT_EQ(Ask(window), 3);
}

TEST(ControlWatch, SeesEveryMessageAndPassesOnTheRest) {
    const OwnWindow window(20, 20);
    Watch watch(3);
    watch.Attach(window.Handle());
    SetWindowTextA(window.Handle(), "text");
    char text[8] = "";
    GetWindowTextA(window.Handle(), text, sizeof text);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(watch.seen, 0);
}

} // namespace
