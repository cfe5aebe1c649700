// Turns what an operation knows of itself into one sentence about a file and the cause.
#pragma once

#include "imaging/outcome.h"
#include "platform/text.h"

#include <string>

namespace lumbrix {

// What the operation was about; empty where there was no such thing.
struct Subject {
    std::string source;
    std::string destination;
    std::string stamp;
    std::string font;
    bool isSourceFile = true; // else the names are for messages only
    bool isDestinationFile = true;
    TextEncoding encoding = TextEncoding::CodePage; // of all of these, and of the sentence
};

// Empty for an operation that succeeded on a whole picture. Looks at the files as they are now.
std::string Sentence(const Outcome& outcome, const Subject& subject);

} // namespace lumbrix
