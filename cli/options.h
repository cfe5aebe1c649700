// The words behind a command, and what a command throws when it cannot do its work.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumbrix::cli {

// Ends the program with status 2: the command was called wrongly. The text says how it is called right.
struct WrongUsage {
    std::string text;
};

// Ends the program with status 1: a file stands in the way. One sentence that names the file and the cause.
struct Failure {
    std::string text;
};

// Ends the program without a word: the user wanted it to stop.
struct Stopped {};

// What a shell offers for the value of an option.
enum class Offer { Nothing, Files, Folders };

struct Option {
    const char* name;    // with its dashes
    const char* value;   // as the help shows it, null for an option that takes none
    const char* purpose; // with what holds where the option is not given
    char letter = 0;     // of the short form, 'j' for "-j"; 0 for none
    Offer offer = Offer::Nothing;
    const char* words = nullptr; // all that the value can be, with blanks between them; null for anything
};

// Options that the help shows together.
struct OptionGroup {
    const char* title;
    std::span<const Option> options;
};

// Every command knows this option.
inline constexpr Option HelpOption{"--help", nullptr, "print the help on the command", 'h'};

// The words behind a command, taken apart.
class Arguments {
  public:
    // Options may stand anywhere; "--" ends them, and all words behind it are plain. A value is a word of its own, or
    // stands behind "=" or behind a single letter: "--jobs 4", "--jobs=4", "-j 4", "-j4". Letters without values may
    // share a dash. A lone dash and a dash before a digit begin plain words. Throws WrongUsage for an option that is
    // not among the known ones, for one whose value is missing, and for a value that is not wanted.
    Arguments(const std::vector<std::string>& words, std::span<const Option> known);

    std::size_t Count() const { return plain_.size(); }
    const std::string& operator[](std::size_t index) const { return plain_[index]; }

    bool Has(const std::string& option) const { return options_.contains(option); }

    // The value of an option, of the last one where it was given several times.
    std::optional<std::string> ValueOf(const std::string& option) const;

  private:
    std::vector<std::string> plain_;
    std::map<std::string, std::string> options_;
};

} // namespace lumbrix::cli
