// Messages to windows of other processes, none of which is waited for without end.
#include "tests/windows/sending.h"

#include "tests/windows/deadline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

namespace tests {

namespace {

struct NamedMessage {
    UINT message;
    const char* name;
};

constexpr NamedMessage NamedMessages[] = {{WM_NULL, "WM_NULL"},
                                          {WM_SETTEXT, "WM_SETTEXT"},
                                          {WM_GETTEXT, "WM_GETTEXT"},
                                          {WM_GETTEXTLENGTH, "WM_GETTEXTLENGTH"},
                                          {WM_CLOSE, "WM_CLOSE"},
                                          {WM_COMMAND, "WM_COMMAND"},
                                          {WM_SYSCOMMAND, "WM_SYSCOMMAND"},
                                          {WM_DROPFILES, "WM_DROPFILES"},
                                          {WM_NEXTDLGCTL, "WM_NEXTDLGCTL"},
                                          {BM_GETCHECK, "BM_GETCHECK"},
                                          {BM_SETCHECK, "BM_SETCHECK"},
                                          {BM_CLICK, "BM_CLICK"}};

// Which message to which window, in the words of a report.
std::string Described(HWND window, UINT message, WPARAM wParam) {
    std::ostringstream text;
    const auto* known = std::find_if(std::begin(NamedMessages), std::end(NamedMessages),
                                     [&](const NamedMessage& row) { return row.message == message; });
    if (known != std::end(NamedMessages)) {
        text << known->name;
    } else {
        text << "message 0x" << std::hex << message << std::dec;
    }
    char caption[80] = ""; // which a window that does not answer can be asked for too
    GetWindowTextA(window, caption, sizeof caption);
    text << " (" << wParam << ") to the " << WindowClass(window) << " \"" << caption << "\" of id "
         << GetDlgCtrlID(window);
    return text.str();
}

} // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam, DWORD patienceMs) {
    if (IsTestOver()) {
        return 0;
    }
    const std::string sent = Described(window, message, wParam);
    const Waiting waiting("an answer to " + sent);
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, patienceMs, &answer) == 0) {
        EXPECT_FALSE(IsWindow(window)) << "no answer to " << sent << " within " << patienceMs << " ms";
        return 0;
    }
    return static_cast<LRESULT>(answer);
}

} // namespace tests
