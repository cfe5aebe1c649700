// A program that the program under test starts: adds a line to the file beside it that is named like it with ".started"
// behind, with how its window was to be shown and its command line. Before that it writes the numbers of its process
// and its thread to another, with ".numbers" behind.
#include <windows.h>

#include <fstream>
#include <string>

namespace {

std::string OwnPath() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show) {
    std::ofstream(OwnPath() + ".numbers", std::ios::binary) << GetCurrentProcessId() << " " << GetCurrentThreadId();
    std::ofstream(OwnPath() + ".started", std::ios::app | std::ios::binary)
        << std::to_string(show) + " " + GetCommandLineA() + "\n";
    return 0;
}
