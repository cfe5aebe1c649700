// The help that the command line prints.
#include "cli/help.h"

#include <algorithm>

namespace lumbrix::cli {

namespace {

constexpr std::size_t SpellingWidth = 24;

constexpr const char* Remarks[] = {
    "Formats read: BMP, JPEG, PNG, GIF, TIFF, ICO (on Windows EMF and WMF too).",
    "Formats written: .bmp .jpg .jpeg .gif .tif .tiff .png; the target's extension or --to names the format.",
    "Where there is one SOURCE, - is the standard input; as TARGET, with --to, it is the standard output.",
    ("Options may stand anywhere behind the command, and -- ends them: behind it, or with ./ in front, a file's name "
     "may begin with a dash."),
    "A value stands behind its option or behind a sign of equality: --jobs 4, --jobs=4, -j 4, -j4.",
    "Where several files are written a failure is told at once, the work goes on, and a line of counts closes it.",
    "In JSON, bytes that are not UTF-8 are replaced by U+FFFD.",
};

bool HasGroup(const Command& command, const OptionGroup& group) {
    return std::any_of(command.groups.begin(), command.groups.end(),
                       [&](const OptionGroup& each) { return each.options.data() == group.options.data(); });
}

std::string LineOf(const Option& option, const std::string& margin) {
    std::string spelling = SpellingOf(option);
    spelling.resize(std::max(spelling.size(), SpellingWidth), ' ');
    return margin + spelling + "  " + option.purpose + "\n";
}

std::string LinesOf(const OptionGroup& group, const std::string& margin) {
    std::string lines;
    for (const Option& option : group.options) {
        lines += LineOf(option, margin);
    }
    return lines;
}

std::string SummaryOf(const Command& command) {
    std::string text = std::string("  ") + command.name + " " + command.arguments + "\n";
    if (command.several != nullptr) {
        text += std::string("  ") + command.name + " " + command.several + "\n";
    }
    text += std::string("      ") + command.purpose + "\n";
    if (command.note != nullptr) {
        text += std::string("      ") + command.note + "\n";
    }
    for (const OptionGroup& group : command.groups) {
        text += IsOwnGroup(group) ? LinesOf(group, "        ") : "";
    }
    return text;
}

} // namespace

std::string SpellingOf(const Option& option) {
    const std::string letter = option.letter == 0 ? "    " : std::string("-") + option.letter + ", ";
    return letter + option.name + (option.value == nullptr ? "" : std::string(" ") + option.value);
}

std::string CommandsWith(const OptionGroup& group) {
    std::string names;
    for (const Command& command : Commands()) {
        if (HasGroup(command, group)) {
            names += (names.empty() ? "" : ", ") + std::string(command.name);
        }
    }
    return names;
}

bool IsOwnGroup(const OptionGroup& group) {
    const auto commands = Commands();
    return std::count_if(commands.begin(), commands.end(),
                         [&](const Command& command) { return HasGroup(command, group); }) == 1;
}

std::vector<OptionGroup> SharedGroups() {
    std::vector<OptionGroup> shared;
    for (const Command& command : Commands()) {
        for (const OptionGroup& group : command.groups) {
            const bool isKnown = std::any_of(shared.begin(), shared.end(), [&](const OptionGroup& known) {
                return known.options.data() == group.options.data();
            });
            if (!isKnown && !IsOwnGroup(group)) {
                shared.push_back(group);
            }
        }
    }
    return shared;
}

std::span<const char* const> GeneralRemarks() { return Remarks; }

std::string Help() {
    std::string text = "Usage: lumbrix-cli COMMAND ARGUMENTS [OPTIONS]\n\n";
    for (const Command& command : Commands()) {
        text += SummaryOf(command);
    }
    for (const OptionGroup& group : SharedGroups()) {
        text += std::string("\n") + group.title + " (" + CommandsWith(group) + "):\n" + LinesOf(group, "  ");
    }
    text += "\n  -h, --help     print this help, behind a command the help on that one, with examples\n"
            "  -V, --version  print the version\n\n";
    for (const char* remark : Remarks) {
        text += std::string(remark) + "\n";
    }
    return text + "Exit status: " + ExitStatuses + "\n";
}

std::string HelpOn(const Command& command) {
    const std::string start = std::string("  lumbrix-cli ") + command.name + " ";
    const std::string ending = command.groups.empty() ? "\n" : " [OPTIONS]\n";
    std::string text = "Usage:\n" + start + command.arguments + ending;
    if (command.several != nullptr) {
        text += start + command.several + ending;
    }
    text += std::string("      ") + command.purpose + "\n";
    if (command.note != nullptr) {
        text += std::string("      ") + command.note + "\n";
    }
    for (const OptionGroup& group : command.groups) {
        text += std::string("\n") + group.title + ":\n" + LinesOf(group, "  ");
    }
    text += "\nExamples:\n";
    for (const Example& example : command.examples) {
        text += std::string("  lumbrix-cli ") + example.words + "\n      " + example.purpose + "\n";
    }
    return text;
}

} // namespace lumbrix::cli
