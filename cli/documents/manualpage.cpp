// The page of the manual.
#include "cli/documents/documents.h"

#include "base/lettercase.h"
#include "cli/help.h"
#include "imaging/exports/lumbrix.h"

namespace lumbrix::cli {

namespace {

// Text as the formatter takes it for what it is.
std::string Plain(const std::string& text) {
    std::string plain;
    for (const char character : text) {
        if (character == '\\') {
            plain += "\\e";
        } else if (character == '-') {
            plain += "\\-";
        } else if ((character == '.' || character == '\'') && plain.empty()) {
            plain += std::string("\\&") + character;
        } else {
            plain += character;
        }
    }
    return plain;
}

std::string Bold(const std::string& text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string Sentence(const std::string& text) { return Plain(UpperCase(text.substr(0, 1)) + text.substr(1)) + ".\n"; }

std::string EntryOf(const Option& option) {
    std::string entry = ".TP\n";
    if (option.letter != 0) {
        entry += Bold(std::string("-") + option.letter) + ", ";
    }
    entry += Bold(option.name);
    if (option.value != nullptr) {
        entry += " " + Italic(option.value);
    }
    return entry + "\n" + Sentence(option.purpose);
}

std::string EntriesOf(const OptionGroup& group) {
    std::string entries;
    for (const Option& option : group.options) {
        entries += EntryOf(option);
    }
    return entries;
}

std::string CallOf(const Command& command, const char* arguments) {
    return Bold(std::string("lumbrix-cli ") + command.name) + " " + Italic(arguments) + "\n";
}

std::string SectionOn(const Command& command) {
    std::string section = std::string(".SS ") + command.name + "\n" + CallOf(command, command.arguments);
    if (command.several != nullptr) {
        section += ".br\n" + CallOf(command, command.several);
    }
    section += ".PP\n" + Sentence(command.purpose);
    if (command.note != nullptr) {
        section += ".PP\n" + Sentence(command.note);
    }
    for (const OptionGroup& group : command.groups) {
        section += IsOwnGroup(group) ? EntriesOf(group) : "";
    }
    return section;
}

std::string SharedOptions() {
    std::string section = ".SH OPTIONS\nOptions may stand anywhere behind the command.\n";
    for (const OptionGroup& group : SharedGroups()) {
        section += std::string(".SS ") + group.title + "\nFor " + Plain(CommandsWith(group)) + ".\n" + EntriesOf(group);
    }
    return section + ".SS Everywhere\n" + EntryOf(HelpOption) + ".TP\n" + Bold("-V") + ", " + Bold("--version") +
           "\nPrint the version.\n";
}

std::string Examples() {
    std::string section = ".SH EXAMPLES\n";
    for (const Command& command : Commands()) {
        for (const Example& example : command.examples) {
            section += ".TP\n" + Bold(std::string("lumbrix-cli ") + example.words) + "\n" + Sentence(example.purpose);
        }
    }
    return section;
}

std::string Notes() {
    std::string section = ".SH NOTES\n";
    for (const char* remark : GeneralRemarks()) {
        section += Plain(remark) + "\n.PP\n";
    }
    return section;
}

} // namespace

std::string ManualPage() {
    std::string page =
        std::string(".TH LUMBRIX-CLI 1 \"\" \"Lumbrix ") + lumbrix_version() + "\" \"User Commands\"\n" +
        ".nh\n.SH NAME\nlumbrix\\-cli \\- works on image files\n.SH SYNOPSIS\n" + Bold("lumbrix-cli") + " " +
        Italic("COMMAND ARGUMENTS") + " [" + Italic("OPTIONS") +
        "]\n.SH DESCRIPTION\nConverts, resizes, crops, turns and annotates image files, one or many at a "
        "time.\n.SH COMMANDS\n";
    for (const Command& command : Commands()) {
        page += SectionOn(command);
    }
    return page + SharedOptions() + Examples() + Notes() + ".SH EXIT STATUS\n" + Plain(ExitStatuses) +
           "\n.SH SEE ALSO\n" + Bold("lumbrix") + "(1)\n";
}

} // namespace lumbrix::cli
