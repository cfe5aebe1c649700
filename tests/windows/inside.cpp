// Within another process: calls of its functions, and its memory.
#include "tests/windows/inside.h"

#include "tests/windows/deadline.h"
#include "tests/windows/insiderequest.h"
#include "tests/windows/sending.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace tests {

namespace {

DWORD ProcessIdOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

// The memory that the hook reads what is asked from.
class SharedRequest {
  public:
    SharedRequest()
        : memory_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(InsideRequest),
                                     InsideMemoryName(GetCurrentProcessId()).c_str())),
          request_(static_cast<InsideRequest*>(MapViewOfFile(memory_, FILE_MAP_WRITE, 0, 0, 0))) {}
    ~SharedRequest() {
        UnmapViewOfFile(request_);
        CloseHandle(memory_);
    }
    SharedRequest(const SharedRequest&) = delete;
    SharedRequest& operator=(const SharedRequest&) = delete;

    InsideRequest& operator*() const { return *request_; }

  private:
    HANDLE memory_;
    InsideRequest* request_;
};

// The hook in the thread of a window while this lives.
class InsideHook {
  public:
    explicit InsideHook(HWND window) {
        static const HMODULE library = LoadLibraryA(InsideHookFile);
        const auto procedure =
            reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(library, InsideHookName)));
        hook_ = SetWindowsHookExA(WH_CALLWNDPROC, procedure, library, GetWindowThreadProcessId(window, nullptr));
        EXPECT_NE(hook_, nullptr) << "no hook, error " << GetLastError();
    }
    ~InsideHook() { UnhookWindowsHookEx(hook_); }
    InsideHook(const InsideHook&) = delete;
    InsideHook& operator=(const InsideHook&) = delete;

  private:
    HHOOK hook_;
};

InsideRequest RequestFor(const char* library, const char* function, const std::vector<std::uint32_t>& arguments) {
    InsideRequest request{};
    std::strncpy(request.library.data(), library, request.library.size() - 1);
    std::strncpy(request.function.data(), function, request.function.size() - 1);
    request.count = static_cast<std::uint32_t>(arguments.size());
    EXPECT_LE(arguments.size(), InsideRequest::MostArguments);
    std::copy(arguments.begin(), arguments.end(), request.arguments.begin());
    return request;
}

} // namespace

Inside::Inside(HWND window)
    : window_(window),
      process_(OpenProcess(PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_VM_OPERATION, FALSE, ProcessIdOf(window))) {
    EXPECT_NE(process_, nullptr) << "no process";
}

Inside::~Inside() { CloseHandle(process_); }

std::uint32_t Inside::Call(const char* library, const char* function,
                           const std::vector<std::uint32_t>& arguments) const {
    const SharedRequest shared;
    *shared = RequestFor(library, function, arguments);
    const InsideHook hook(window_);
    const Waiting waiting("an answer to " + std::string(function) + " of " + library + " within the program");
    Send(window_, RegisterWindowMessageA(InsideMessageName), GetCurrentProcessId());
    EXPECT_EQ((*shared).isDone, 1u) << function << " has not been called within the program";
    return (*shared).result;
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
