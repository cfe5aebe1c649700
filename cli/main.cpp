// lumbrix-cli: the exported procedures from a shell. Ends with 0 when the work was done, 1 when a file stood in the
// way, 2 when it was called wrongly.
#include "cli/commands.h"
#include "imaging/exports/lumbrix.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace lumbrix::cli;

constexpr int Failed = 1;
constexpr int CalledWrongly = 2;

void PrintHelp() {
    std::printf("Usage: lumbrix-cli COMMAND ARGUMENTS\n\n");
    for (const Command& command : Commands()) {
        std::printf("  %-8s %-22s %s\n", command.name, command.arguments, command.purpose);
    }
    std::printf("\n  --help     print this help\n"
                "  --version  print the version\n\n"
                "Formats read: BMP, JPEG, PNG, GIF, TIFF, ICO (on Windows EMF and WMF too).\n"
                "Formats written: .bmp .jpg .jpeg .gif .tif .tiff .png\n");
}

const Command& FindCommand(const std::string& name) {
    for (const Command& command : Commands()) {
        if (name == command.name) {
            return command;
        }
    }
    throw WrongUsage{"there is no command '" + name + "'"};
}

void Run(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw WrongUsage{"a command is needed"};
    }
    if (words[0] == "--help" || words[0] == "-h") {
        return PrintHelp();
    }
    if (words[0] == "--version") {
        std::printf("lumbrix-cli %s\n", lumbrix_version());
        return;
    }
    const Command& command = FindCommand(words[0]);
    const std::vector<std::string> arguments(words.begin() + 1, words.end());
    if (arguments.size() != command.argumentCount) {
        throw WrongUsage{std::string("usage: lumbrix-cli ") + command.name + " " + command.arguments};
    }
    LoadImagingLibrary();
    command.run(arguments);
    UnloadImagingLibrary();
}

} // namespace

int main(int count, char** words) {
    try {
        Run({words + 1, words + count});
        return std::fflush(stdout) == 0 ? 0 : Failed;
    } catch (const WrongUsage& usage) {
        std::fprintf(stderr, "lumbrix-cli: %s; see lumbrix-cli --help\n", usage.text.c_str());
        return CalledWrongly;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "lumbrix-cli: %s\n", failure.text.c_str());
        return Failed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lumbrix-cli: %s\n", error.what());
        return Failed;
    }
}
