// The paint window.
#pragma once

#include "draw/textfont.h"
#include "toolkit/messages.h"

#include <windows.h>

#include <string>

namespace lumbrix {

// Opens the window on a bitmap file, which it deletes, and stays until it has ended. Whether the drawing was to be
// saved: then it stands in the file that SavedDrawing names, if that could be written.
bool DrawWindow(HWND parent, const std::string& drawFile, TextFont& textFont, Messages& messages);

} // namespace lumbrix
