// The imaging library in memory, sessions of it, and images loaded from files.
#include "imaging/session.h"

#include "imaging/gdiplus/bindings.h"
#include "platform/text.h"

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

FlatStatus OpenImagingSession(SessionToken* token) {
    const GdiplusStartupInput input{1, nullptr, 0, 0};
    return GdiplusStartup(token, &input, nullptr);
}

StatusValue StartImagingSession() {
    SessionToken token = 0;
    return OpenImagingSession(&token) == 0 ? static_cast<StatusValue>(token) : NoSession;
}

void EndImagingSession(StatusValue token) { GdiplusShutdown(static_cast<SessionToken>(token)); }

FlatStatus LoadImageFile(const std::string& name, ImageHandle* image) {
    return GdipLoadImageFromFile(ToWide(name).c_str(), image);
}

FlatStatus DisposeImageHandle(ImageHandle image) { return GdipDisposeImage(image); }

} // namespace lumbrix
