// What the system is asked to open and to start.
#include "desktop/desktopsystem.h"
#include "desktop/helpfile.h"
#include "desktop/systemlauncher.h"

#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/replacedimport.h"

#include <gtest/gtest.h>

#include <shellapi.h>

#include <optional>

namespace {

using namespace lumbrix;
using namespace tests;

// The words of one call; a null text is none.
struct AskedOpening {
    HWND window = nullptr;
    std::string verb;
    std::string file;
    std::optional<std::string> parameters;
    std::optional<std::string> folder;
    int show = 0;
};

AskedOpening askedOpening;

std::optional<std::string> TextOrNone(const char* text) {
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

HINSTANCE WINAPI AskToOpen(HWND window, const char* verb, const char* file, const char* parameters, const char* folder,
                           int show) {
    askedOpening = {window, verb, file, TextOrNone(parameters), TextOrNone(folder), show};
    return nullptr;
}

struct AskedStart {
    std::optional<std::string> program;
    std::string command;
    BOOL inherits = TRUE;
    DWORD flags = 1;
    STARTUPINFOA info{};
};

AskedStart askedStart;

BOOL WINAPI AskToStart(const char* program, char* command, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL inherits,
                       DWORD flags, void*, const char*, STARTUPINFOA* info, PROCESS_INFORMATION*) {
    askedStart = {TextOrNone(program), command, inherits, flags, *info};
    return FALSE;
}

const HWND AsksForPages = reinterpret_cast<HWND>(0x1234);

TEST(Launching, PageIsOpenedForTheWindowInANormalOne) {
    const ReplacedImport opening("ShellExecuteA", AskToOpen);
    SystemLauncher(AsksForPages).OpenPage("https://www.example.org/");
    EXPECT_EQ(askedOpening.window, AsksForPages);
    EXPECT_EQ(askedOpening.verb, "open");
    EXPECT_EQ(askedOpening.file, "https://www.example.org/");
    EXPECT_EQ(askedOpening.parameters, std::nullopt);
    EXPECT_EQ(askedOpening.folder, std::nullopt);
    EXPECT_EQ(askedOpening.show, 1);
}

TEST(Launching, HelpIsOpenedForNoWindow) {
    const ReplacedImport opening("ShellExecuteA", AskToOpen);
    WriteHelpFile();
    EXPECT_EQ(askedOpening.window, nullptr);
    EXPECT_EQ(askedOpening.verb, "open");
    EXPECT_EQ(askedOpening.file.substr(askedOpening.file.size() - 4), ".txt");
    EXPECT_EQ(ReadBytes(askedOpening.file).substr(0, 26), "How to annotate images?\r\n-");
    EXPECT_EQ(askedOpening.parameters, "");
    EXPECT_EQ(askedOpening.folder, "");
    EXPECT_EQ(askedOpening.show, 1);
    std::filesystem::remove(askedOpening.file);
    std::filesystem::remove(std::filesystem::path(askedOpening.file).replace_extension("tmp"));
}

TEST(Launching, ProgramIsStartedByItsQuotedNameInANormalWindow) {
    const ReplacedImport starting("CreateProcessA", AskToStart);
    SystemLauncher(nullptr).StartProgram("C:\\shared tools\\tool.exe");
    EXPECT_EQ(askedStart.program, std::nullopt);
    EXPECT_EQ(askedStart.command, "\"C:\\shared tools\\tool.exe\"");
    EXPECT_EQ(askedStart.inherits, FALSE);
    EXPECT_EQ(askedStart.flags, 0u);
    EXPECT_EQ(askedStart.info.cb, sizeof(STARTUPINFOA));
    EXPECT_EQ(askedStart.info.dwFlags, 1u); // how its window is shown
    EXPECT_EQ(askedStart.info.wShowWindow, 1);
}

TEST(DayOfTheSystem, IsCountedInMillisecondsSinceMidnight) {
    const auto now = [] {
        SYSTEMTIME time{};
        GetLocalTime(&time);
        return time.wHour * 3'600'000 + time.wMinute * 60'000 + time.wSecond * 1'000 + time.wMilliseconds;
    };
    int before = 0, counted = 0, after = 0;
    do {
        before = now();
        counted = DesktopSystem().MillisecondsOfDay();
        after = now();
    } while (after < before); // midnight
    EXPECT_LE(before, counted);
    EXPECT_LE(counted, after);
}

} // namespace
