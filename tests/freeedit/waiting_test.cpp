// When the Free Edit window lets the user wait.
#include "freeedit/transformwindow.h"

#include "freeedit/transformlayout.h"
#include "imaging/exports/lumbrix.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/fakemessages.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

using namespace lumbrix;
using namespace tests;

// Called again and again while the window is open, until it says that it has done its work.
std::function<bool(HWND)> workInWindow;

void CALLBACK WorkWhenOpen(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND window = FindWindowA(nullptr, "Change your image");
    if (window != nullptr && workInWindow(window)) {
        KillTimer(nullptr, timer);
    }
}

class WaitingInFreeEdit : public testing::Test {
  protected:
    WaitingInFreeEdit() {
        LoadImagingLibrary();
        WriteBytes(folder_ / "source.bmp", MakeBmp(40, 30, [](int, int) { return Green; }));
        order_.sourceFile = (folder_ / "source.bmp").string();
        order_.target = (folder_ / "out.bmp").string();
    }
    ~WaitingInFreeEdit() override { UnloadImagingLibrary(); }

    // Opens the window, and closes it once the work is done.
    void Run(std::function<bool(HWND)> work) {
        constexpr UINT BetweenLooksMs = 20;
        workInWindow = [&](HWND window) {
            const bool isDone = work(window);
            if (isDone) {
                PostMessageA(window, WM_CLOSE, 0, 0);
            }
            return isDone;
        };
        SetTimer(nullptr, 0, BetweenLooksMs, WorkWhenOpen);
        ShowTransformWindow(nullptr, order_, state_, messages_);
    }

    static void Hover(HWND window, int label) {
        RECT place{};
        GetWindowRect(GetDlgItem(window, label), &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        SendMessageA(window, WM_MOUSEMOVE, 0,
                     MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2));
    }

    TemporaryFolder folder_;
    FakeOrder order_;
    FreeEditState state_;
    FakeMessages messages_;
};

TEST_F(WaitingInFreeEdit, IsForTheLoadingAndForEachSave) {
    std::vector<bool> isSaved;
    messages_.onWait = [&] { isSaved.push_back(std::filesystem::exists(folder_ / "out.bmp")); };
    Run([&](HWND window) {
        if (messages_.begun == 0) { // it is not loaded yet
            return false;
        }
        Hover(window, transformwindow::SaveLabel);
        SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, 0);
        SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, 0);
        return true;
    });
    EXPECT_EQ(isSaved, (std::vector{false, false, true}));
    EXPECT_EQ(messages_.waits, 0);
    EXPECT_TRUE(messages_.said.empty());
}

TEST_F(WaitingInFreeEdit, EndsWithTheStepsForgotten) {
    state_.steps.counter = 5;
    Run([](HWND) { return true; });
    EXPECT_EQ(state_.steps.counter, 0);
    EXPECT_EQ(state_.steps.owner, nullptr);
}

} // namespace
