// Lumbrix, the desktop program: everything from its start to its end, in order.
#include "freeedit/stepfiles.h"
#include "imaging/exports/internal.h"
#include "mainwindow/mainwindow.h"
#include "platform/cleanup.h"
#include "toolkit/handles.h"

#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

namespace {

// The classes of Windows 95, dates, and Internet addresses.
constexpr DWORD ControlClasses = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_INTERNET_CLASSES;
static_assert(ControlClasses == 2559);

// The library of common controls has grown; an old one knows only the older call.
void InitialiseCommonControls() {
    const lumbrix::OwnedModule library(LoadLibraryA("COMCTL32.DLL"));
    if (!library) {
        return;
    }
    using InitialiseClasses = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto initialiseClasses = reinterpret_cast<InitialiseClasses>(
        reinterpret_cast<void*>(GetProcAddress(library.Get(), "InitCommonControlsEx")));
    if (initialiseClasses != nullptr) {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ControlClasses};
        initialiseClasses(&classes);
    } else {
        InitCommonControls();
    }
}

void RunProgram() {
    lumbrix::RunPendingDeletes();
    InitialiseCommonControls();
    InitCommonControls();
    lumbrix::SweepWorkFolder();
    lumbrix::SweepCleanUpList();
    DeployImagingLibrary();
    LoadImagingLibrary();
    lumbrix::BuildMainWindow(nullptr);
    UnloadImagingLibrary();
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    CoInitialize(nullptr);
    RunProgram();
    CoUninitialize();
    return 0;
}
