// Turns what an operation knows of itself into one sentence about a file and the cause.
#pragma once

#include "imaging/outcome.h"

#include <string>

namespace lumbrix {

// What the operation was about; empty where there was no such thing.
struct Subject {
    std::string source;
    std::string destination;
    std::string stamp;
    std::string font;
};

// Empty for an operation that succeeded on a whole picture. Looks at the files as they are now.
std::string Sentence(const Outcome& outcome, const Subject& subject);

} // namespace lumbrix
