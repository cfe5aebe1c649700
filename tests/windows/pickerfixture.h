// A test with the file picker as the main window opens it.
#pragma once

#include "tests/windows/programfixture.h"

#include <commctrl.h>

namespace tests {

constexpr int PreviewCaptionId = 345;
constexpr int PreviewPaneId = 346;

class FilePicker : public ProgramTest {
  protected:
    HWND Open() const {
        program_.BeginClick(SourceFileButton);
        const HWND dialog = program_.WaitForDialog();
        EXPECT_TRUE(WaitFor([&] { return GetDlgItem(dialog, PreviewPaneId) != nullptr; }));
        return dialog;
    }

    // Types a name and presses the dialog's own button.
    static void Choose(HWND dialog, const std::string& name) {
        SetFileName(OpenWindow(dialog), name);
        PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }

    static void Cancel(HWND dialog) {
        PostMessageA(GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }

    // The dialog's list once it has at least so many entries.
    static HWND List(HWND dialog, int entries) {
        HWND list = nullptr;
        EXPECT_TRUE(WaitFor([&] {
            list = FindBelow(dialog, "SysListView32");
            return list != nullptr && Send(list, LVM_GETITEMCOUNT) >= entries;
        }));
        return list;
    }

    // Selects the entry with this number in the dialog's list.
    void Select(HWND dialog, int entry) const {
        const HWND list = List(dialog, entry + 1);
        LVITEMA selected{};
        selected.stateMask = selected.state = LVIS_SELECTED | LVIS_FOCUSED;
        const std::uint32_t inside = program_.PutInside(&selected, sizeof selected);
        Send(list, LVM_SETITEMSTATE, static_cast<WPARAM>(entry), static_cast<LPARAM>(inside));
    }
};

} // namespace tests
