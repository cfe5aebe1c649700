// The shortcut on the desktop, as the running program makes it, leaves it and takes it away.
#include "mainwindow/layout.h"
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::mainwindow;
using namespace tests;

constexpr DWORD LateMs = 6000;

// A wait for the shortcut into which midnight falls lasts for a day.
void LetMidnightPass() {
    const Waiting waiting("midnight to pass");
    SYSTEMTIME now{};
    for (GetLocalTime(&now); now.wHour == 23 && now.wMinute == 59 && now.wSecond >= 30; GetLocalTime(&now)) {
        Sleep(100);
    }
}

class ShortcutOfTheProgram : public testing::Test {
  protected:
    ShortcutOfTheProgram() {
        LetMidnightPass();
        for (const char* name : {"lumbrix.exe", "lumbrix.dll", "gdiplus.dll"}) {
            std::filesystem::copy_file(std::filesystem::path(LUMBRIX_ARTIFACTS) / name, folder_ / name);
        }
    }

    // How long it takes until the window is there to be used.
    DWORD TimeToStart() const {
        const DWORD before = GetTickCount();
        RunningProgram program(folder_.Path(), folder_.Path(), AtStart::DesktopIsAsItIs);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(program.Window()) != FALSE; }));
        const DWORD time = GetTickCount() - before;
        EXPECT_EQ(program.Close(), 0u);
        return time;
    }

    TemporaryFolder folder_;
};

TEST_F(ShortcutOfTheProgram, IsMadeAtTheFirstStartWhichIsSixSecondsLate) {
    std::filesystem::remove(ShortcutOnDesktop());
    const DWORD time = TimeToStart();
    EXPECT_GE(time, LateMs);
    EXPECT_LT(time, LateMs + 10000);
    const std::string link = ReadBytes(ShortcutOnDesktop());
    EXPECT_EQ(link.substr(0, 4), std::string("\x4C\0\0\0", 4)); // as every link begins
    EXPECT_NE(link.find((folder_ / "lumbrix.exe").string()), std::string::npos);
    EXPECT_LT(TimeToStart(), LateMs);
    EXPECT_EQ(ReadBytes(ShortcutOnDesktop()), link);
}

TEST_F(ShortcutOfTheProgram, ThatLeadsElsewhereStays) {
    WriteBytes(ShortcutOnDesktop(), "x");
    EXPECT_LT(TimeToStart(), LateMs);
    EXPECT_EQ(ReadBytes(ShortcutOnDesktop()), "x");
}

TEST_F(ShortcutOfTheProgram, ThatIsEmptyIsMadeAnew) {
    WriteBytes(ShortcutOnDesktop(), "");
    EXPECT_GE(TimeToStart(), LateMs);
    EXPECT_GT(std::filesystem::file_size(ShortcutOnDesktop()), 100u);
}

// The program's main window while it is not shown yet; null where there is none.
HWND WindowBeingMade(DWORD process) {
    HWND window = nullptr;
    while ((window = FindWindowExA(nullptr, window, DialogClass, nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process && GetDlgItem(window, AboutButton) != nullptr && !IsWindowVisible(window)) {
            break;
        }
    }
    return window;
}

bool HasStyleFromOutside(HWND window, int index, LONG style) {
    return (GetWindowLongA(window, index) & style) == style;
}

// The window works off no messages while the shortcut is waited for, so it is looked at without sending any.
TEST_F(ShortcutOfTheProgram, IsMadeOnceTheCropCheckIsHiddenAndBeforeFilesAreTaken) {
    std::filesystem::remove(ShortcutOnDesktop());
    const auto expectHalfMade = [](DWORD process) {
        EXPECT_TRUE(WaitFor([] { return std::filesystem::exists(ShortcutOnDesktop()); }));
        const HWND window = WindowBeingMade(process);
        ASSERT_NE(window, nullptr) << "the shortcut was not made before the window was shown";
        EXPECT_FALSE(HasStyleFromOutside(GetDlgItem(window, CropCheck), GWL_STYLE, WS_VISIBLE));
        EXPECT_FALSE(HasStyleFromOutside(window, GWL_EXSTYLE, WS_EX_ACCEPTFILES));
    };
    RunningProgram program(folder_.Path(), folder_.Path(), AtStart::DesktopIsAsItIs, expectHalfMade);
    EXPECT_TRUE(HasStyleFromOutside(program.Window(), GWL_EXSTYLE, WS_EX_ACCEPTFILES));
    EXPECT_FALSE(program.IsVisible(CropCheck));
    EXPECT_EQ(program.Close(), 0u);
}

} // namespace
