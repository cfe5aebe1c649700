// The commands of the command line: what each is called, takes and does. The one table behind parsing, help, manual and
// the completion of shells.
#pragma once

#include "cli/options.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace lumbrix::cli {

struct Example {
    const char* words;   // behind "lumbrix-cli "
    const char* purpose; // what it does
};

inline constexpr std::size_t AnyNumber = static_cast<std::size_t>(-1);

struct Command {
    const char* name;
    const char* arguments; // as the help shows them
    const char* purpose;
    std::size_t fewestArguments; // where there is no --into
    std::size_t mostArguments;
    std::span<const OptionGroup> groups;
    int (*run)(const Arguments& arguments); // gives the exit status; throws WrongUsage or Failure
    std::span<const Example> examples;
    const char* several = nullptr; // the arguments where several sources are given, null where that cannot be
    const char* note = nullptr;    // what else the help says
};

std::span<const Command> Commands();

// Throws WrongUsage for a name that no command has.
const Command& FindCommand(const std::string& name);

// Its options of all groups.
std::vector<Option> OptionsOf(const Command& command);

// Throws WrongUsage for a number of plain words that the command does not take.
void ExpectArguments(const Command& command, const Arguments& arguments);

} // namespace lumbrix::cli
