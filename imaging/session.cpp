// The imaging library in memory, and sessions of it.
#include "imaging/session.h"

#include "imaging/gdiplus/bindings.h"

namespace lumbrix {

void LoadImagingLibrary() {
    if (ImagingLibraryHandle == nullptr) {
        ImagingLibraryHandle = LoadModule("gdiplus.dll");
    }
}

void UnloadImagingLibrary() {
    if (ImagingLibraryHandle != nullptr) {
        UnloadModule(ImagingLibraryHandle);
        ImagingLibraryHandle = nullptr;
    }
}

FlatStatus StartLastingSession(SessionToken* token) {
    const GdiplusStartupInput input{1, nullptr, 0, 0};
    return GdiplusStartup(token, &input, nullptr);
}

void EndLastingSession(SessionToken token) {
    if (token != 0) {
        GdiplusShutdown(token);
    }
}

StatusValue StartImagingSession() {
    SessionToken token = 0;
    return StartLastingSession(&token) == 0 ? static_cast<StatusValue>(token) : NoSession;
}

void EndImagingSession(StatusValue token) { GdiplusShutdown(static_cast<SessionToken>(token)); }

} // namespace lumbrix
