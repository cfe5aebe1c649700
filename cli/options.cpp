// Tells the options of a command from its other words.
#include "cli/options.h"

#include "cli/spelling.h"

#include <algorithm>

namespace lumbrix::cli {

namespace {

constexpr const char* EndOfOptions = "--";

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

bool IsLong(const std::string& word) { return word.starts_with("--"); }

// A number below zero is no option, and no letter of an option is a digit.
bool IsShort(const std::string& word) { return word.size() > 1 && word[0] == '-' && !IsDigit(word[1]); }

class Parser {
  public:
    Parser(const std::vector<std::string>& words, std::span<const Option> known)
        : known_(known), word_(words.begin()), end_(words.end()) {}

    void Parse(std::vector<std::string>& plain) {
        for (; word_ != end_; ++word_) {
            if (*word_ == EndOfOptions) {
                plain.insert(plain.end(), word_ + 1, end_);
                return;
            }
            if (IsLong(*word_)) {
                TakeLong(*word_);
            } else if (IsShort(*word_)) {
                TakeShort(*word_);
            } else {
                plain.push_back(*word_);
            }
        }
    }

    std::map<std::string, std::string> Options() { return std::move(options_); }

  private:
    void TakeLong(const std::string& word) {
        const std::size_t sign = word.find('=');
        const Option& option = FindLong(word.substr(0, sign));
        if (sign == std::string::npos) {
            options_[option.name] = option.value == nullptr ? "" : NextWord(option);
        } else if (option.value != nullptr) {
            options_[option.name] = word.substr(sign + 1);
        } else {
            throw WrongUsage{std::string(option.name) + " takes no value"};
        }
    }

    void TakeShort(const std::string& word) {
        for (std::size_t i = 1; i < word.size(); ++i) {
            const Option& option = FindLetter(word[i], word);
            if (option.value != nullptr) {
                options_[option.name] = i + 1 < word.size() ? word.substr(i + 1) : NextWord(option);
                return;
            }
            options_[option.name] = "";
        }
    }

    std::string NextWord(const Option& option) {
        if (word_ + 1 == end_) {
            throw WrongUsage{std::string("missing value: ") + option.name + " " + option.value};
        }
        return *++word_;
    }

    const Option& FindLong(const std::string& name) const {
        if (name == HelpOption.name) {
            return HelpOption;
        }
        const auto option =
            std::find_if(known_.begin(), known_.end(), [&](const Option& each) { return name == each.name; });
        if (option == known_.end()) {
            throw WrongUsage{"unknown option '" + name + "'" + Suggestion(name, Names())};
        }
        return *option;
    }

    const Option& FindLetter(char letter, const std::string& word) const {
        if (letter == HelpOption.letter) {
            return HelpOption;
        }
        const auto option =
            std::find_if(known_.begin(), known_.end(), [&](const Option& each) { return letter == each.letter; });
        if (option == known_.end()) {
            throw WrongUsage{"unknown option '-" + std::string(1, letter) + "'; a file of the name " + word + " is ./" +
                             word};
        }
        return *option;
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names{HelpOption.name};
        for (const Option& option : known_) {
            names.emplace_back(option.name);
        }
        return names;
    }

    std::span<const Option> known_;
    std::vector<std::string>::const_iterator word_;
    std::vector<std::string>::const_iterator end_;
    std::map<std::string, std::string> options_;
};

} // namespace

Arguments::Arguments(const std::vector<std::string>& words, std::span<const Option> known) {
    Parser parser(words, known);
    parser.Parse(plain_);
    options_ = parser.Options();
}

std::optional<std::string> Arguments::ValueOf(const std::string& option) const {
    const auto found = options_.find(option);
    return found == options_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace lumbrix::cli
