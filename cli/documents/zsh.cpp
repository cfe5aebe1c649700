// The completion of zsh.
#include "cli/documents/documents.h"

#include "cli/help.h"

namespace lumbrix::cli {

namespace {

// Between apostrophes, where brackets and colons separate the parts of a specification.
std::string Description(const std::string& text) {
    std::string description;
    for (const char character : text) {
        if (character == '\'') {
            description += "'\\''";
        } else if (character == '[' || character == ']' || character == ':' || character == '\\') {
            description += std::string("\\") + character;
        } else {
            description += character;
        }
    }
    return description;
}

std::string ActionFor(const Option& option) {
    if (option.words != nullptr) {
        return std::string("(") + option.words + ")";
    }
    switch (option.offer) {
    case Offer::Files:
        return "_files";
    case Offer::Folders:
        return "_files -/";
    case Offer::Nothing:
        break;
    }
    return "";
}

// One line for each spelling; whoever gives one is not offered the other.
std::string LinesFor(const Option& option) {
    const std::string explained = std::string("[") + Description(option.purpose) + "]";
    const std::string value = option.value == nullptr ? "" : std::string(":") + option.value + ":" + ActionFor(option);
    const std::string letter = option.letter == 0 ? "" : std::string("-") + option.letter;
    const std::string either = "'(" + (letter.empty() ? "" : letter + " ") + option.name + ")";
    std::string lines;
    if (!letter.empty()) {
        lines += "            " + either + letter + (value.empty() ? "" : "+") + explained + value + "' \\\n";
    }
    return lines + "            " + either + option.name + (value.empty() ? "" : "=") + explained + value + "' \\\n";
}

std::string CaseOf(const Command& command) {
    std::string lines = std::string("    ") + command.name + ")\n        _arguments -s -S \\\n" + LinesFor(HelpOption);
    for (const Option& option : OptionsOf(command)) {
        lines += LinesFor(option);
    }
    return lines + "            '*:file:_files'\n        ;;\n";
}

} // namespace

std::string ZshCompletion() {
    std::string script = "#compdef lumbrix-cli\n# Completion of lumbrix-cli for zsh, made from its table of commands.\n"
                         "_lumbrix_cli() {\n    local -a commands\n    commands=(\n";
    for (const Command& command : Commands()) {
        script += std::string("        '") + command.name + ":" + Description(command.purpose) + "'\n";
    }
    script += "        'help:print the help'\n    )\n    if ((CURRENT == 2)); then\n"
              "        _describe -t commands command commands\n"
              "        _arguments '(- *)'{-h,--help}'[print the help]' '(- *)'{-V,--version}'[print the version]'\n"
              "        return\n    fi\n    local command=$words[2]\n    shift words\n    ((CURRENT--))\n"
              "    case $command in\n    help)\n        _describe -t commands command commands\n        ;;\n";
    for (const Command& command : Commands()) {
        script += CaseOf(command);
    }
    return script + "    esac\n}\n_lumbrix_cli \"$@\"\n";
}

} // namespace lumbrix::cli
