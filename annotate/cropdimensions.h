// The dialog that takes a crop rectangle as four numbers.
#pragma once

#include "base/geometry.h"

#include <windows.h>

namespace lumbrix {

// Shows the dialog until OK is pressed, which is the only way out, and sets the rectangle then; gives back the end
// value, 0. The boxes start empty whatever the rectangle is.
INT_PTR ShowCropDimensions(HWND parent, PixelRectangle& rectangle);

} // namespace lumbrix
