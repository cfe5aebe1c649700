// The dialog in which three corners of the picture are typed.
#pragma once

#include "freeedit/transform.h"

#include <windows.h>

namespace lumbrix {

// Runs until Set, which changes the texts, or Abort, which leaves them; always 0. Nothing is checked.
INT_PTR ShowSkewDialog(HWND parent, CornerTexts& corners);

} // namespace lumbrix
