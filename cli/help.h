// The help that the command line prints.
#pragma once

#include "cli/commands.h"

#include <string>

namespace lumbrix::cli {

// What --help prints: all commands and all options.
std::string Help();

// The help on one command, with examples.
std::string HelpOn(const Command& command);

// An option as it is written: "-j, --jobs N".
std::string SpellingOf(const Option& option);

// The groups of options that several commands have, each once.
std::vector<OptionGroup> SharedGroups();

// Whether no other command has this group.
bool IsOwnGroup(const OptionGroup& group);

// The names of the commands that have a group, with commas between them.
std::string CommandsWith(const OptionGroup& group);

inline constexpr const char* ExitStatuses = "0 done, 1 a file stood in the way, 2 called wrongly, 130 interrupted.";

// What is to be said about all commands, a sentence each.
std::span<const char* const> GeneralRemarks();

} // namespace lumbrix::cli
