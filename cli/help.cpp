// What --help prints.
#include "cli/help.h"

#include <cstdio>
#include <string>

namespace lumbrix::cli {

namespace {

void PrintOption(const Option& option) {
    const std::string words = option.value == nullptr ? option.name : std::string(option.name) + " " + option.value;
    std::printf("        %-16s  %s\n", words.c_str(), option.purpose);
}

void PrintCommand(const Command& command, const char* before = "") {
    std::printf("  %s%s %s%s\n      %s\n", before, command.name, command.arguments,
                command.options.empty() ? "" : " [OPTIONS]", command.purpose);
    if (command.note != nullptr) {
        std::printf("      %s\n", command.note);
    }
    for (const Option& option : command.options) {
        PrintOption(option);
    }
}

} // namespace

void PrintHelpOn(const Command& command) {
    std::printf("Usage:\n");
    PrintCommand(command, "lumbrix-cli ");
}

void PrintHelp() {
    std::printf("Usage: lumbrix-cli COMMAND ARGUMENTS [OPTIONS]\n\n");
    for (const Command& command : Commands()) {
        PrintCommand(command);
    }
    std::printf("\n  --help     print this help, behind a command the help on that one\n"
                "  --version  print the version\n\n"
                "Formats read: BMP, JPEG, PNG, GIF, TIFF, ICO (on Windows EMF and WMF too).\n"
                "Formats written: .bmp .jpg .jpeg .gif .tif .tiff .png; the target's extension names the format.\n"
                "Options may stand anywhere behind the command; -- ends them.\n"
                "Exit status: 0 done, 1 a file stood in the way, 2 called wrongly, 130 interrupted.\n");
}

} // namespace lumbrix::cli
