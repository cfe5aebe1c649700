// The commands on what a file says about its picture: size, properties and date.
#pragma once

#include "cli/job.h"
#include "cli/options.h"

namespace lumbrix::cli {

inline constexpr Option DateOptions[] = {StrictOption, QualityOption, CompressionOption};

int RunSize(const Arguments& arguments);
int RunProperties(const Arguments& arguments);

// Prints the date, or writes a copy with another.
int RunDate(const Arguments& arguments);

} // namespace lumbrix::cli
