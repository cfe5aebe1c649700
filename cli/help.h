// What --help prints.
#pragma once

namespace lumbrix::cli {

void PrintHelp();

} // namespace lumbrix::cli
