// The dialog that takes a crop rectangle as four numbers.
#pragma once

#include <windows.h>

namespace lumbrix {

// Shows the dialog until OK is pressed, which is the only way out, and sets CropRect then; gives back the end value, 0.
// The boxes start empty whatever CropRect holds.
INT_PTR ShowCropDimensions(HWND parent);

} // namespace lumbrix
