// Makes an icon file of a bitmap file.
#pragma once

#include "toolkit/messages.h"

#include <windows.h>

#include <string>

namespace lumbrix {

// Of the graphic control that stands in the window while an icon is made.
inline constexpr int IconGraphicId = 1234;

// What is said where the bitmap was not loaded.
inline constexpr const char* PictureNotCopied = "Unable to BitBlt Picture.";

// Writes the icon beside a square bitmap, under its name with "ico" for the last three characters; one that is there is
// replaced, and "written.ico" in the folder of the window's program deleted. Says why it could not be made. Where the
// bitmap was not loaded, or raised what is told below, the graphic control stays in the window.
// Raises where a file cannot be read, deleted or written.
void MakeIcon(HWND window, const std::string& bitmapPath, Messages& messages);

} // namespace lumbrix
