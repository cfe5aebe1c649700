// The names that saves use on Linux in between, and what is left of saves that were killed.
#pragma once

#include <string>

namespace imaginglibrary {

// Where a file lies: "." or a path that ends in a slash.
std::string FolderOf(const std::string& path);

// Short, for the target's own name may be as long as names can be.
std::string ScratchNameBeside(const std::string& target);

// Deletes files with such names from the target's folder that are older than a day and not in use. Looks once at each
// folder: a save is killed in between so rarely that this will do.
void SweepBeside(const std::string& target) noexcept;

} // namespace imaginglibrary
