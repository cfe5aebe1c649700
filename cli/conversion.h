// The commands that convert as the engine does, in one step: convert and thumb.
#pragma once

#include "cli/options.h"

#include <string>

namespace lumbrix::cli {

int RunConvert(const Arguments& arguments);
int RunThumb(const Arguments& arguments);

} // namespace lumbrix::cli
