// The imaging library in memory, sessions of it, and images loaded from files.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/status.h"

#include <string>

namespace lumbrix {

// Loads "gdiplus.dll" by its bare name unless it is loaded; that it cannot be is simply kept, and shows in what the
// operations answer. Not while another thread is inside the engine.
void LoadImagingLibrary();
void UnloadImagingLibrary();

// Opens a session for the caller's token. The imaging library's own status.
FlatStatus OpenImagingSession(SessionToken* token);

// The token of a new session, or NoSession.
StatusValue StartImagingSession();

// Takes what StartImagingSession returned, NoSession as well.
void EndImagingSession(StatusValue token);

// The file stays open and locked while the image lives.
FlatStatus LoadImageFile(const std::string& name, ImageHandle* image);

FlatStatus DisposeImageHandle(ImageHandle image);

} // namespace lumbrix
