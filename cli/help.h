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

// What is to be said about all commands, a sentence each.
std::span<const char* const> GeneralRemarks();

} // namespace lumbrix::cli
