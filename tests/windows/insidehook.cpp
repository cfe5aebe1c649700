// A library that a hook brings into the program under test: calls functions there, on the thread of the program's
// windows, between two messages.
//
// A thread made in the program from outside would be simpler. But Wine makes it in the midst of whatever the program's
// own thread does, and where that is just taking memory, both wait for each other for ever.
#include "tests/windows/insiderequest.h"

namespace {

using namespace tests;

using Argument = std::uint32_t;

Argument CallFunction(FARPROC function, const InsideRequest& request) {
    auto* const address = reinterpret_cast<void*>(function);
    const auto& arguments = request.arguments;
    switch (request.count) {
    case 1:
        return reinterpret_cast<Argument(WINAPI*)(Argument)>(address)(arguments[0]);
    case 2:
        return reinterpret_cast<Argument(WINAPI*)(Argument, Argument)>(address)(arguments[0], arguments[1]);
    case 3:
        return reinterpret_cast<Argument(WINAPI*)(Argument, Argument, Argument)>(address)(arguments[0], arguments[1],
                                                                                          arguments[2]);
    default:
        return reinterpret_cast<Argument(WINAPI*)(Argument, Argument, Argument, Argument)>(address)(
            arguments[0], arguments[1], arguments[2], arguments[3]);
    }
}

void Serve(InsideRequest& request) {
    const HMODULE library = GetModuleHandleA(request.library.data());
    const FARPROC function = library == nullptr ? nullptr : GetProcAddress(library, request.function.data());
    if (function != nullptr) {
        request.result = CallFunction(function, request);
        request.isDone = 1;
    }
}

void ServeProcess(DWORD process) {
    const HANDLE memory = OpenFileMappingA(FILE_MAP_WRITE, FALSE, InsideMemoryName(process).c_str());
    if (memory == nullptr) {
        return;
    }
    if (auto* request = static_cast<InsideRequest*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, 0))) {
        Serve(*request);
        UnmapViewOfFile(request);
    }
    CloseHandle(memory);
}

} // namespace

// Wine draws to the screen when a thread asks for messages and there are none, and a question about the screen is
// answered behind all that was drawn to it before.
extern "C" __declspec(dllexport) Argument WINAPI BringToScreen(Argument /*nothing*/) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, 0);
    const HDC screen = GetDC(nullptr);
    GetPixel(screen, 0, 0);
    ReleaseDC(nullptr, screen);
    return 0;
}

extern "C" __declspec(dllexport) LRESULT CALLBACK CallForTheTest(int code, WPARAM wParam, LPARAM lParam) {
    const auto* sent = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent->message == RegisterWindowMessageA(InsideMessageName)) {
        ServeProcess(static_cast<DWORD>(sent->wParam));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
