// The commands that print what a file says about its picture: size and properties.
#pragma once

#include "cli/options.h"

namespace lumbrix::cli {

int RunSize(const Arguments& arguments);
int RunProperties(const Arguments& arguments);

} // namespace lumbrix::cli
