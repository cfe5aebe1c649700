// Choosing an image file, with a preview beside the list.
#pragma once

#include <windows.h>

#include <string>

namespace lumbrix {

enum class PickMode {
    AnyName,
    ExistingFile,
};

// The path that the user chose, or empty text. Opens in the folder of the file that was chosen last, or in the current
// one.
std::string PickImageFile(HWND owner, const std::string& caption, PickMode mode);

} // namespace lumbrix
