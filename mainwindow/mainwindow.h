// The window from which everything starts.
#pragma once

#include <windows.h>

namespace lumbrix {

// Shows the window and stays until it has ended; gives back its end value.
int BuildMainWindow(HWND parent);

} // namespace lumbrix
