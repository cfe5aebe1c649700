// Starting what lies outside the program, by the system itself.
#include "desktop/systemlauncher.h"

#include <shellapi.h>

namespace lumbrix {

void SystemLauncher::OpenPage(const std::string& address) {
    ShellExecuteA(window_, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

// In quotes, for without them a path with blanks could be taken for another program and its arguments.
void SystemLauncher::StartProgram(const std::string& program) {
    std::string command = "\"" + program + "\"";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}

} // namespace lumbrix
