// Turns a layout into the platform's dialog template.
#pragma once

#include "toolkit/layout.h"

#include <windows.h>

#include <vector>

namespace lumbrix {

// What DialogBoxIndirect takes: the window with every control of its table, measured in the units of the default dialog
// font, "MS Sans Serif" of 8 points.
std::vector<WORD> DialogTemplate(const OwnedLayout& layout);

} // namespace lumbrix
