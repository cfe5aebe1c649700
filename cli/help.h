// What --help prints.
#pragma once

#include "cli/commands.h"

namespace lumbrix::cli {

void PrintHelp();

// Prints the help on one command.
void PrintHelpOn(const Command& command);

} // namespace lumbrix::cli
