// A picture as the platform's own service loads and draws it, for the preview of the file picker.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <string>

namespace lumbrix {

// Gives back what `picture` holds, and loads a file into it; null where the file is not one that the service can read.
// An empty path only gives back.
void LoadPreviewPicture(const std::string& path, IPicture*& picture);

// Fills the client area of a window with white.
void ClearPreviewPane(HWND pane);

// Draws a picture in the middle of a window.
void DrawPreview(HWND pane, IPicture& picture);

} // namespace lumbrix
