// The command that reads and writes the date that a file holds about its picture.
#pragma once

#include "cli/options.h"

namespace lumbrix::cli {

int RunDate(const Arguments& arguments);

} // namespace lumbrix::cli
