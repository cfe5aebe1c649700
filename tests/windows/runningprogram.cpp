// The real program with its window, driven from outside as a person would drive it.
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>

namespace tests {

namespace {

constexpr DWORD PatienceMs = 20000;
constexpr DWORD BetweenAsksMs = 15;
constexpr const char* DialogClass = "#32770";

struct WindowSearch {
    DWORD process;
    const std::function<bool(HWND)>& fits;
    HWND found = nullptr;
};

BOOL CALLBACK TryWindow(HWND window, LPARAM argument) {
    auto& search = *reinterpret_cast<WindowSearch*>(argument);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search.process && IsWindowVisible(window) && search.fits(window)) {
        search.found = window;
    }
    return search.found == nullptr;
}

// The visible top-level window of a process that satisfies `fits`.
HWND FindTopWindow(DWORD process, const std::function<bool(HWND)>& fits) {
    WindowSearch search{process, fits};
    EnumWindows(TryWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

bool WaitFor(const std::function<bool()>& holds) {
    for (const DWORD start = GetTickCount(); GetTickCount() - start < PatienceMs; Sleep(BetweenAsksMs)) {
        if (holds()) {
            return true;
        }
    }
    return holds();
}

bool WaitUntilLasting(const std::function<bool()>& holds) {
    constexpr int Lasting = 15;
    int inRow = 0;
    return WaitFor([&] { return (inRow = holds() ? inRow + 1 : 0) >= Lasting; });
}

std::string WindowText(HWND window) {
    std::string text(static_cast<std::size_t>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0)) + 1, '\0');
    text.resize(
        static_cast<std::size_t>(SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string WindowClass(HWND window) {
    char name[80] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

void PressKey(WORD key, bool withShift) {
    if (withShift) {
        keybd_event(VK_SHIFT, 0, 0, 0);
    }
    keybd_event(static_cast<BYTE>(key), 0, 0, 0);
    keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
    if (withShift) {
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    }
}

HWND FindBelow(HWND window, const char* className) {
    if (HWND direct = FindWindowExA(window, nullptr, className, nullptr)) {
        return direct;
    }
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (HWND deeper = FindBelow(child, className)) {
            return deeper;
        }
    }
    return nullptr;
}

void SaveScreenshot(const std::string& path) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    std::string pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, '\0');
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), pixels.data(), reinterpret_cast<BITMAPINFO*>(&header),
              DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof header;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    WriteBytes(path, std::string(reinterpret_cast<const char*>(&file), sizeof file) +
                         std::string(reinterpret_cast<const char*>(&header), sizeof header) + pixels);
}

RunningProgram::RunningProgram() {
    const std::filesystem::path artifacts = LUMBRIX_ARTIFACTS;
    for (const char* name : {"lumbrix.exe", "lumbrix.dll", "gdiplus.dll"}) {
        std::filesystem::copy_file(artifacts / name, folder_ / name);
    }
    Start(folder_.Path(), folder_.Path());
}

RunningProgram::RunningProgram(const std::filesystem::path& folder, const std::filesystem::path& currentFolder) {
    Start(folder, currentFolder);
}

void RunningProgram::Start(const std::filesystem::path& folder, const std::filesystem::path& currentFolder) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    std::wstring command = L"\"" + (folder / "lumbrix.exe").wstring() + L"\"";
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, currentFolder.c_str(), &start,
                        &process_)) {
        ADD_FAILURE() << "not started, error " << GetLastError();
        return;
    }
    WaitForInputIdle(process_.hProcess, PatienceMs);
    EXPECT_TRUE(WaitFor([&] { return FindMainWindow() != nullptr; })) << "no window";
    window_ = FindMainWindow();
}

RunningProgram::~RunningProgram() {
    // A window that is closed hands the keyboard on in good order; one that is killed does not.
    constexpr DWORD PolitenessMs = 3000;
    PostMessageA(window_, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(process_.hProcess, IsQuiet() ? PolitenessMs : 0) != WAIT_OBJECT_0) {
        TerminateProcess(process_.hProcess, 1);
    }
    WaitForSingleObject(process_.hProcess, PatienceMs);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

HWND RunningProgram::FindMainWindow() const {
    return FindTopWindow(process_.dwProcessId, [](HWND window) {
        return WindowClass(window) == DialogClass && GetDlgItem(window, 1039) != nullptr; // the last control
    });
}

HWND RunningProgram::FindDialog(HWND besides) const {
    return FindTopWindow(process_.dwProcessId, [&](HWND window) {
        return window != window_ && window != besides && WindowClass(window) == DialogClass;
    });
}

void RunningProgram::SetText(int id, const std::string& text) const {
    SendMessageA(Item(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

HWND RunningProgram::WaitForDialog(HWND besides) const {
    EXPECT_TRUE(WaitFor([&] { return FindDialog(besides) != nullptr; })) << "no further window";
    return FindDialog(besides);
}

std::string RunningProgram::Answer(int button) const {
    const HWND box = WaitForDialog();
    if (box == nullptr) {
        return {};
    }
    constexpr int TextId = 0xFFFF;
    EXPECT_TRUE(WaitFor([&] { return GetDlgItem(box, button) != nullptr && GetDlgItem(box, TextId) != nullptr; }));
    const std::string said = WindowText(box) + ": " + WindowText(GetDlgItem(box, TextId));
    PostMessageA(GetDlgItem(box, button), BM_CLICK, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); })) << said;
    return said;
}

std::uint32_t RunningProgram::CallInside(const char* library, const char* function,
                                         const std::vector<std::uint32_t>& arguments) const {
    std::vector<unsigned char> code;
    const auto addNumber = [&](std::uint32_t number) {
        for (int shift = 0; shift < 32; shift += 8) {
            code.push_back(static_cast<unsigned char>(number >> shift));
        }
    };
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        code.push_back(0x68); // push
        addNumber(*argument);
    }
    code.push_back(0xB8); // mov eax
    addNumber(
        reinterpret_cast<std::uint32_t>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(library), function))));
    code.insert(code.end(), {0xFF, 0xD0, 0xC2, 0x04, 0x00}); // call eax; ret 4
    void* place = VirtualAllocEx(process_.hProcess, nullptr, code.size(), MEM_COMMIT, PAGE_EXECUTE_READWRITE);
    WriteProcessMemory(process_.hProcess, place, code.data(), code.size(), nullptr);
    const HANDLE thread = CreateRemoteThread(process_.hProcess, nullptr, 0,
                                             reinterpret_cast<LPTHREAD_START_ROUTINE>(place), nullptr, 0, nullptr);
    WaitForSingleObject(thread, PatienceMs);
    DWORD result = 0;
    GetExitCodeThread(thread, &result);
    CloseHandle(thread);
    VirtualFreeEx(process_.hProcess, place, 0, MEM_RELEASE);
    return result;
}

std::uint32_t RunningProgram::PutInside(const void* bytes, std::size_t count) const {
    const std::uint32_t address = CallInside("kernel32.dll", "GlobalAlloc", {GPTR, static_cast<std::uint32_t>(count)});
    EXPECT_TRUE(WriteProcessMemory(process_.hProcess, reinterpret_cast<void*>(address), bytes, count, nullptr));
    return address;
}

void RunningProgram::GetFromInside(std::uint32_t address, void* bytes, std::size_t count) const {
    EXPECT_TRUE(ReadProcessMemory(process_.hProcess, reinterpret_cast<void*>(address), bytes, count, nullptr));
}

void RunningProgram::Drop(const std::vector<std::string>& paths) const {
    DROPFILES header{};
    header.pFiles = sizeof header;
    std::vector<char> bytes(sizeof header);
    std::memcpy(bytes.data(), &header, sizeof header);
    for (const std::string& path : paths) {
        bytes.insert(bytes.end(), path.c_str(), path.c_str() + path.size() + 1);
    }
    bytes.push_back('\0');
    // Only memory of the program's own global heap can be read as what is dropped.
    SendMessageA(window_, WM_DROPFILES, PutInside(bytes.data(), bytes.size()), 0);
}

int RunningProgram::FocusedId() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return info.hwndFocus == nullptr ? 0 : GetDlgCtrlID(info.hwndFocus);
}

void RunningProgram::Activate() const {
    EXPECT_TRUE(WaitUntilLasting([&] {
        if (GetForegroundWindow() == window_ && FocusedId() != 0) {
            return true;
        }
        SetForegroundWindow(window_);
        return false;
    })) << "not in front";
}

DWORD RunningProgram::Close() {
    PostMessageA(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(WaitForSingleObject(process_.hProcess, PatienceMs), WAIT_OBJECT_0);
    DWORD code = ~0u;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

} // namespace tests
