// The box that tells about the program.
#pragma once

#include "desktop/removal.h"

#include <windows.h>

namespace lumbrix {

// Runs until the close box, or until the program is uninstalled: that takes the steps given, but for the end of the
// box, which is its own.
void ShowAbout(HWND parent, RemovalSteps removal);

} // namespace lumbrix
