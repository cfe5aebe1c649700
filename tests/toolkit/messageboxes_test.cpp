// Message boxes and the mouse pointer around them.
#include "toolkit/messageboxes.h"

#include "tests/toolkit/answering.h"
#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

HCURSOR Standard(const char* name) { return LoadCursorA(nullptr, name); }

TEST(MessageBoxes, ShowsTextAndTitleAndOneButton) {
    MessageBoxes messages;
    const Answering answering(IDOK);
    messages.Show("All is well.", "Lumbrix");
    EXPECT_EQ(answering.Said(), "Lumbrix: All is well.");
    EXPECT_EQ(answering.Buttons(), 1);
}

TEST(MessageBoxes, AsksForYesOrNo) {
    MessageBoxes messages;
    {
        const Answering answering(IDYES);
        EXPECT_TRUE(messages.Confirm("Overwrite it?", "Please verify..."));
        EXPECT_EQ(answering.Said(), "Please verify...: Overwrite it?");
        EXPECT_EQ(answering.Buttons(), 2);
    }
    const Answering answering(IDNO);
    EXPECT_FALSE(messages.Confirm("Overwrite it?", "Please verify..."));
}

TEST(MessageBoxes, TechnicalOneHasNoTitle) {
    MessageBoxes messages;
    const Answering answering(IDOK);
    messages.ShowTechnical("Error initializing GDI+");
    EXPECT_EQ(answering.Said(), ": Error initializing GDI+");
}

// A window of the same thread waits for a technical message, and for no other.
TEST(MessageBoxes, OnlyTheTechnicalOneHoldsTheWindowsUp) {
    MessageBoxes messages;
    const OwnWindow window(50, 50);
    bool isServed = true;
    const auto look = [&](HWND box) {
        isServed = IsWindowEnabled(window.Handle()) != FALSE;
        SendMessageA(box, WM_COMMAND, IDOK, 0);
    };
    {
        const Answering answering(look);
        messages.ShowTechnical("Error initializing GDI+");
        EXPECT_FALSE(isServed);
        EXPECT_TRUE(IsWindowEnabled(window.Handle()));
    }
    const Answering answering(look);
    messages.Show("All is well.", "Lumbrix");
    EXPECT_TRUE(isServed);
}

TEST(MessageBoxes, PointerWaitsFromTheFirstBeginningToTheLastEnd) {
    MessageBoxes messages;
    SetCursor(Standard(IDC_CROSS));
    {
        const WaitCursor outer(messages);
        EXPECT_EQ(GetCursor(), Standard(IDC_WAIT));
        {
            const WaitCursor inner(messages);
            EXPECT_EQ(GetCursor(), Standard(IDC_WAIT));
        }
        EXPECT_EQ(GetCursor(), Standard(IDC_WAIT));
    }
    EXPECT_EQ(GetCursor(), Standard(IDC_CROSS));
}

TEST(MessageBoxes, PointerIsAnArrowOverAMessageAndWaitsBehindIt) {
    SetCursorPos(0, 0); // the box sets the pointer itself where it lies over it
    MessageBoxes messages;
    const WaitCursor wait(messages);
    const Answering answering(IDOK);
    messages.Show("Done", "Lumbrix");
    EXPECT_EQ(answering.Pointer(), Standard(IDC_ARROW));
    EXPECT_EQ(GetCursor(), Standard(IDC_WAIT));
}

} // namespace
