// The completion of bash.
#include "cli/documents/documents.h"

#include "cli/help.h"

#include <set>

namespace lumbrix::cli {

namespace {

constexpr const char* Start = R"(# Completion of lumbrix-cli for bash, made from its table of commands.
_lumbrix_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options=
    # A sign of equality between an option and its value is a word of its own here.
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
)";

// Where the function offers nothing, bash offers files.
constexpr const char* End = R"(    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    fi
}
complete -o bashdefault -o default -F _lumbrix_cli lumbrix-cli
)";

std::string CommandNames(const std::string& separator) {
    std::string names;
    for (const Command& command : Commands()) {
        names += (names.empty() ? "" : separator) + command.name;
    }
    return names;
}

std::string Offering(const std::string& words) {
    return "mapfile -t COMPREPLY < <(compgen -W \"" + words + "\" -- \"$current\")";
}

std::string OptionWords(const Command& command) {
    std::string words = "-h --help";
    for (const Option& option : OptionsOf(command)) {
        words += option.letter == 0 ? "" : std::string(" -") + option.letter;
        words += std::string(" ") + option.name;
    }
    return words;
}

std::string CaseOf(const Command& command) {
    return std::string("    ") + command.name + ")\n        options=\"" + OptionWords(command) + "\"\n        ;;\n";
}

std::string OfferedFor(const Option& option) {
    if (option.words != nullptr) {
        return Offering(option.words);
    }
    switch (option.offer) {
    case Offer::Folders:
        return "compopt -o filenames\n        mapfile -t COMPREPLY < <(compgen -d -- \"$current\")";
    case Offer::Nothing:
        return "compopt +o bashdefault +o default";
    case Offer::Files:
        break;
    }
    return "compopt -o default";
}

std::string CaseOf(const Option& option) {
    const std::string letter = option.letter == 0 ? "" : std::string("-") + option.letter + " | ";
    return "    " + letter + option.name + ")\n        " + OfferedFor(option) + "\n        return\n        ;;\n";
}

// Options of one name take the same in all commands.
std::string ValueCases() {
    std::string cases;
    std::set<std::string> known;
    for (const Command& command : Commands()) {
        for (const Option& option : OptionsOf(command)) {
            if (option.value != nullptr && known.insert(option.name).second) {
                cases += CaseOf(option);
            }
        }
    }
    return cases;
}

} // namespace

std::string BashCompletion() {
    std::string script = Start;
    script += "    if ((COMP_CWORD == 1)); then\n        " +
              Offering(CommandNames(" ") + " help -h --help -V --version") + "\n        return\n    fi\n" +
              "    case ${COMP_WORDS[1]} in\n    help)\n        " + Offering(CommandNames(" ")) +
              "\n        return\n        ;;\n";
    for (const Command& command : Commands()) {
        script += CaseOf(command);
    }
    return script + "    esac\n    case $previous in\n" + ValueCases() + "    esac\n" + End;
}

} // namespace lumbrix::cli
