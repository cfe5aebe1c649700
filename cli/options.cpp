// Tells the options of a command from its other words.
#include "cli/options.h"

#include <algorithm>

namespace lumbrix::cli {

namespace {

constexpr const char* EndOfOptions = "--";
constexpr Option Help{HelpOption, nullptr, ""};

const Option& FindOption(const std::string& word, std::span<const Option> known) {
    if (word == HelpOption) {
        return Help;
    }
    const auto option = std::find_if(known.begin(), known.end(), [&](const Option& each) { return word == each.name; });
    if (option == known.end()) {
        throw WrongUsage{"unknown option '" + word + "'"};
    }
    return *option;
}

} // namespace

Arguments::Arguments(const std::vector<std::string>& words, std::span<const Option> known) {
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (*word == EndOfOptions) {
            plain_.insert(plain_.end(), word + 1, words.end());
            return;
        }
        if (!word->starts_with("--")) {
            plain_.push_back(*word);
            continue;
        }
        const Option& option = FindOption(*word, known);
        if (option.value == nullptr) {
            options_[option.name] = "";
            continue;
        }
        if (++word == words.end()) {
            throw WrongUsage{std::string("missing value: ") + option.name + " " + option.value};
        }
        options_[option.name] = *word;
    }
}

std::optional<std::string> Arguments::ValueOf(const std::string& option) const {
    const auto found = options_.find(option);
    return found == options_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace lumbrix::cli
