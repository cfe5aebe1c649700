// What a command throws when it cannot do its work.
#pragma once

#include <string>

namespace lumbrix::cli {

// Ends the program with status 2: the command was called wrongly. The text says how it is called right.
struct WrongUsage {
    std::string text;
};

// Ends the program with status 1: a file stands in the way. One sentence that names the file and the cause.
struct Failure {
    std::string text;
};

} // namespace lumbrix::cli
