// The real program with its window, driven from outside as a person would drive it.
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

#include <shlobj.h>

namespace tests {

std::filesystem::path ShortcutOnDesktop() {
    wchar_t desktop[MAX_PATH] = L"";
    EXPECT_TRUE(SHGetSpecialFolderPathW(nullptr, desktop, CSIDL_DESKTOPDIRECTORY, FALSE));
    return std::filesystem::path(desktop) / "Lumbrix.lnk";
}

RunningProgram::RunningProgram() {
    const std::filesystem::path artifacts = LUMBRIX_ARTIFACTS;
    for (const char* name : {"lumbrix.exe", "lumbrix.dll", "gdiplus.dll"}) {
        std::filesystem::copy_file(artifacts / name, folder_ / name);
    }
    WriteBytes(ShortcutOnDesktop(), "of another start");
    Start(folder_.Path(), folder_.Path());
}

RunningProgram::RunningProgram(const std::filesystem::path& folder, const std::filesystem::path& currentFolder,
                               AtStart atStart, const LookingOn& lookingOn) {
    if (atStart == AtStart::ShortcutIsThere) {
        WriteBytes(ShortcutOnDesktop(), "of another start");
    }
    Start(folder, currentFolder, lookingOn);
}

void RunningProgram::Start(const std::filesystem::path& folder, const std::filesystem::path& currentFolder,
                           const LookingOn& lookingOn) {
    const Waiting waiting("the program to start");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    std::wstring command = L"\"" + (folder / "lumbrix.exe").wstring() + L"\"";
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, currentFolder.c_str(), &start,
                        &process_)) {
        ADD_FAILURE() << "not started, error " << GetLastError();
        return;
    }
    endedWithTest_.emplace(process_.hProcess);
    if (lookingOn) {
        lookingOn(process_.dwProcessId);
    }
    WaitForInputIdle(process_.hProcess, PatienceMs);
    EXPECT_TRUE(WaitFor([&] { return FindMainWindow() != nullptr; })) << "no window";
    Take(FindMainWindow());
}

RunningProgram::~RunningProgram() {
    const Waiting waiting("the program to end");
    // A window that is closed hands the keyboard on in good order; one that is killed does not.
    constexpr DWORD PolitenessMs = 3000;
    PostMessageA(Window(), WM_CLOSE, 0, 0);
    if (WaitForSingleObject(process_.hProcess, IsQuiet() ? PolitenessMs : 0) != WAIT_OBJECT_0) {
        TerminateProcess(process_.hProcess, 1);
    }
    WaitForSingleObject(process_.hProcess, PatienceMs);
    endedWithTest_.reset();
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

HWND RunningProgram::FindMainWindow() const {
    return FindTopWindow(process_.dwProcessId, [](HWND window) {
        return WindowClass(window) == DialogClass && GetDlgItem(window, 1039) != nullptr; // the last control
    });
}

DWORD RunningProgram::Close() {
    const Waiting waiting("the program to end");
    OpenWindow::Close();
    EXPECT_EQ(WaitForSingleObject(process_.hProcess, PatienceMs), WAIT_OBJECT_0);
    DWORD code = ~0u;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

} // namespace tests
