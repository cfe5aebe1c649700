// The commands that print what a file says about its picture: size and properties.
#include "cli/reading.h"

#include "cli/causes.h"
#include "cli/errors.h"
#include "cli/text.h"

#include <cstdio>

namespace lumbrix::cli {

namespace {

// A property of a kind that is not shown has a line with its name alone.
bool HasValue(const std::string& line) {
    const std::size_t nameEnd = line.find('\t');
    return nameEnd != std::string::npos && line.find_first_not_of('\t', nameEnd) != std::string::npos;
}

void PrintProperties(const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", start), text.size());
        const std::string line = text.substr(start, end - start);
        if (HasValue(line)) {
            std::printf("%s\n", Printable(line).c_str());
        }
        start = end + 2;
    }
}

} // namespace

int RunSize(const Arguments& arguments) {
    std::printf("%s\n", TextOf(SizeOf(arguments[0])).c_str());
    return 0;
}

int RunProperties(const Arguments& arguments) {
    const std::string& file = arguments[0];
    SizeOf(file); // a file that cannot be read would look like one without properties
    LibraryText error;
    LibraryText list;
    EnumerateImageProperties(file.c_str(), error.Place(), list.Place());
    if (!error.Text().empty()) {
        throw Failure{"cannot read " + file + ": " + error.Text()};
    }
    PrintProperties(list.Text());
    return 0;
}

} // namespace lumbrix::cli
