// The commands of the command line: what each is called, takes and does.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace lumbrix::cli {

// Ends the program with status 2: the command was called wrongly. The text says how it is called right.
struct WrongUsage {
    std::string text;
};

// Ends the program with status 1: a file stands in the way. One sentence that names the file and the cause.
struct Failure {
    std::string text;
};

struct Command {
    const char* name;
    const char* arguments; // as the help shows them
    const char* purpose;
    std::size_t argumentCount;
    void (*run)(const std::vector<std::string>& arguments); // throws WrongUsage or Failure
};

std::span<const Command> Commands();

} // namespace lumbrix::cli
