// The commands of the command line: what each is called, takes and does, and the help on them.
#pragma once

#include "cli/options.h"

#include <cstddef>
#include <span>

namespace lumbrix::cli {

struct Command {
    const char* name;
    const char* arguments; // as the help shows them
    const char* purpose;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    std::span<const Option> options;
    int (*run)(const Arguments& arguments); // gives the exit status; throws WrongUsage or Failure
    const char* note = nullptr;             // what else the help says
};

std::span<const Command> Commands();

// What --help prints.
void PrintHelp();

// Prints the help on one command.
void PrintHelpOn(const Command& command);

} // namespace lumbrix::cli
