// The command that makes an icon of a bitmap.
#pragma once

#include "cli/options.h"

namespace lumbrix::cli {

// Prints the icon's name. Wrong usage where the system has no icons.
int RunIcon(const Arguments& arguments);

} // namespace lumbrix::cli
