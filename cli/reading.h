// The commands on what a file says about its picture: size, properties and date.
#pragma once

#include "cli/batchoptions.h"
#include "cli/options.h"

namespace lumbrix::cli {

inline constexpr Option ReadingOptions[] = {JsonOption};

// Of several files a line each, with the name behind the size.
int RunSize(const Arguments& arguments);
int RunProperties(const Arguments& arguments);

// Prints the date, or writes a copy with another.
int RunDate(const Arguments& arguments);

} // namespace lumbrix::cli
