// An imaging library that starts no session.
#include <windows.h>

#include <cstdint>

namespace {

constexpr std::int32_t GdiplusNotInitialized = 18;

} // namespace

extern "C" __declspec(dllexport) std::int32_t __stdcall GdiplusStartup(std::uintptr_t*, const void*, void*) {
    return GdiplusNotInitialized;
}

// A shutdown is a failure that is seen: nothing was started.
extern "C" __declspec(dllexport) void __stdcall GdiplusShutdown(std::uintptr_t) {
    TerminateProcess(GetCurrentProcess(), 77);
}
