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

StatusValue StartImagingSession() {
    const GdiplusStartupInput input{1, nullptr, 0, 0};
    SessionToken token = 0;
    return GdiplusStartup(&token, &input, nullptr) == 0 ? static_cast<StatusValue>(token) : NoSession;
}

void EndImagingSession(StatusValue token) { GdiplusShutdown(static_cast<SessionToken>(token)); }

} // namespace lumbrix
