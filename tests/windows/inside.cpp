// Within another process: calls of its functions, and its memory.
#include "tests/windows/inside.h"

#include "tests/windows/desktop.h"

#include <gtest/gtest.h>

namespace tests {

namespace {

HANDLE ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
}

} // namespace

Inside::Inside(HWND window) : process_(ProcessOf(window)) { EXPECT_NE(process_, nullptr) << "no process"; }

Inside::~Inside() { CloseHandle(process_); }

std::uint32_t Inside::Call(const char* library, const char* function,
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
    void* place = VirtualAllocEx(process_, nullptr, code.size(), MEM_COMMIT, PAGE_EXECUTE_READWRITE);
    WriteProcessMemory(process_, place, code.data(), code.size(), nullptr);
    const HANDLE thread =
        CreateRemoteThread(process_, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(place), nullptr, 0, nullptr);
    WaitForSingleObject(thread, PatienceMs);
    DWORD result = 0;
    GetExitCodeThread(thread, &result);
    CloseHandle(thread);
    VirtualFreeEx(process_, place, 0, MEM_RELEASE);
    return result;
}

std::uint32_t Inside::Put(const void* bytes, std::size_t count) const {
    const std::uint32_t address = Call("kernel32.dll", "GlobalAlloc", {GPTR, static_cast<std::uint32_t>(count)});
    EXPECT_TRUE(WriteProcessMemory(process_, reinterpret_cast<void*>(address), bytes, count, nullptr));
    return address;
}

void Inside::Get(std::uint32_t address, void* bytes, std::size_t count) const {
    EXPECT_TRUE(ReadProcessMemory(process_, reinterpret_cast<void*>(address), bytes, count, nullptr));
}

} // namespace tests
