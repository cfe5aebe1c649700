// The page of the manual, and what shells need to complete the words of a call, each made from the table of commands.
#pragma once

#include <string>

namespace lumbrix::cli {

// In the language of man(7).
std::string ManualPage();

// Scripts that bash, zsh and fish read.
std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

} // namespace lumbrix::cli
