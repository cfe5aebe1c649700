// The real program with its window, driven from outside as a person would drive it.
#pragma once

#include "tests/support/temporaryfolder.h"
#include "tests/windows/deadline.h"
#include "tests/windows/desktop.h"
#include "tests/windows/openwindow.h"

#include <functional>
#include <optional>

namespace tests {

// The file of the program's shortcut on the desktop.
std::filesystem::path ShortcutOnDesktop();

// Whether the program finds a shortcut at its start. Where there is none it makes one, and is late.
enum class AtStart {
    ShortcutIsThere,
    DesktopIsAsItIs,
};

using LookingOn = std::function<void(DWORD process)>;

// The program from its start to its end.
class RunningProgram : public OpenWindow {
  public:
    // In a folder of its own with the imaging library beside it.
    RunningProgram();

    // The program file in a folder that is there already. What looks on is called with the process once that runs,
    // before its window is waited for.
    RunningProgram(const std::filesystem::path& folder, const std::filesystem::path& currentFolder,
                   AtStart atStart = AtStart::ShortcutIsThere, const LookingOn& lookingOn = {});

    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    const TemporaryFolder& Folder() const { return folder_; }

    // The path of a file in the program's folder.
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    // Stops all that the program does, as a program that hangs would.
    void Suspend() const { SuspendThread(process_.hThread); }
    void Resume() const { ResumeThread(process_.hThread); }

    // Ends the program by its close box; its exit code.
    DWORD Close();

  private:
    void Start(const std::filesystem::path& folder, const std::filesystem::path& currentFolder,
               const LookingOn& lookingOn = {});
    HWND FindMainWindow() const;

    TemporaryFolder folder_;
    PROCESS_INFORMATION process_{};
    std::optional<EndedWithTest> endedWithTest_;
};

} // namespace tests
