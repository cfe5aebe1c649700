// A program that the program under test starts: adds a line to the file beside it that is named like it with ".started"
// behind, with how its window was to be shown and its command line. Before that it writes the numbers of its process
// and its thread to another, with ".numbers" behind. It ends only when there is no file with ".linger" behind, or after
// half a minute.
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
    constexpr DWORD LongestMs = 30000;
    for (const DWORD start = GetTickCount(); GetTickCount() - start < LongestMs; Sleep(15)) {
        if (GetFileAttributesA((OwnPath() + ".linger").c_str()) == INVALID_FILE_ATTRIBUTES) {
            break;
        }
    }
    return 0;
}
