// The platform's dialogs around windows: choosing a folder, and the window's icon.
#pragma once

#include <windows.h>

#include <string>

namespace lumbrix {

// The folder that the user chose, without a backslash behind, or empty text. The dialog opens on the folder that was
// chosen last in this process, whichever caller it was for. Texts of 259 characters at most.
std::string BrowseForFolder(HWND owner, const std::string& prompt, const std::string& caption);

// Gives a window the program's icon, the resource named "PROGRAM".
void SetWindowIconFromModule(HWND window);

} // namespace lumbrix
