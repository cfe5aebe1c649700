// The completion of fish.
#include "cli/documents/documents.h"

#include "cli/help.h"

namespace lumbrix::cli {

namespace {

constexpr const char* Complete = "complete -c lumbrix-cli ";

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' || character == '\\' ? std::string("\\") + character : std::string(1, character);
    }
    return quoted + "'";
}

std::string OfferedFor(const Option& option) {
    if (option.value == nullptr) {
        return "";
    }
    if (option.words != nullptr) {
        return " -x -a " + Quoted(option.words);
    }
    switch (option.offer) {
    case Offer::Files:
        return " -r -F";
    case Offer::Folders:
        return " -x -a '(__fish_complete_directories)'";
    case Offer::Nothing:
        break;
    }
    return " -x";
}

std::string LineFor(const Option& option, const std::string& condition) {
    const std::string letter = option.letter == 0 ? "" : std::string(" -s ") + option.letter;
    return Complete + condition + letter + " -l " + std::string(option.name).substr(2) + OfferedFor(option) + " -d " +
           Quoted(option.purpose) + "\n";
}

} // namespace

std::string FishCompletion() {
    const std::string first = "-n __fish_use_subcommand";
    std::string script = "# Completion of lumbrix-cli for fish, made from its table of commands.\n";
    for (const Command& command : Commands()) {
        script += Complete + first + " -f -a " + command.name + " -d " + Quoted(command.purpose) + "\n";
    }
    script += Complete + first + " -f -a help -d 'print the help'\n";
    script += Complete + first + " -s V -l version -d 'print the version'\n";
    script += std::string(Complete) + "-s h -l help -d 'print the help'\n";
    for (const Command& command : Commands()) {
        for (const Option& option : OptionsOf(command)) {
            script += LineFor(option, std::string("-n '__fish_seen_subcommand_from ") + command.name + "'");
        }
    }
    return script;
}

} // namespace lumbrix::cli
