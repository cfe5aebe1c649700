// A picture as the platform's own service loads and draws it, for the preview of the file picker.
#pragma once

#include "toolkit/handles.h"

#include <windows.h>

#include <ocidl.h>

#include <string>

namespace lumbrix {

// Loads a file; null where it is not one that the service can read. An empty path is none.
OwnedInterface<IPicture> LoadPreviewPicture(const std::string& path);

// Fills the client area of a window with white.
void ClearPreviewPane(HWND pane);

// Draws a picture in the middle of a window.
void DrawPreview(HWND pane, IPicture& picture);

} // namespace lumbrix
