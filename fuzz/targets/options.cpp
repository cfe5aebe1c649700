// Takes the words of a command line apart; nothing is run. Words end at a NUL, the first is the command's.
#include "cli/batchoptions.h"
#include "cli/commands.h"
#include "cli/folderplan.h"
#include "cli/formats.h"
#include "cli/help.h"
#include "cli/json.h"
#include "cli/numbers.h"
#include "cli/sizing.h"
#include "cli/spelling.h"
#include "cli/text.h"
#include "cli/writing.h"
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"

namespace {

using namespace lumbrix::cli;

constexpr std::size_t MostWords = 40;

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty() && words.size() < MostWords) {
        const std::size_t end = std::min(text.find('\0'), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

// What is wrong is told in words; nothing else may come out.
template <class Work> void Try(Work work) {
    try {
        work();
    } catch (const WrongUsage& usage) {
        fuzz::Require(!usage.text.empty(), "wrong usage is told in words");
        for (const char c : MessageLine(usage.text)) {
            fuzz::Require(c == '\n' || c == '\t' || static_cast<unsigned char>(c) >= ' ',
                          "a terminal obeys no message");
        }
    } catch (const Failure& failure) {
        fuzz::Require(!failure.text.empty(), "a failure is told in words");
    }
}

void TakeNumbers(const std::string& word) {
    Try([&] {
        const std::int32_t number = WholeNumber(word, "number", 1, 100);
        fuzz::Require(number >= 1 && number <= 100, "a number is within its bounds");
    });
    Try([&] { Position(word, "place"); });
    Try([&] {
        const Color color = ColorFrom(word);
        for (const std::int32_t channel : {color.red, color.green, color.blue}) {
            fuzz::Require(channel >= 0 && channel <= 255, "a channel is a byte");
        }
    });
}

void TakeNames(const std::vector<std::string>& words) {
    std::vector<std::filesystem::path> names;
    for (const std::string& word : words) {
        Try([&] { FormatOfWord(word); });
        Try([&] { FormatOfName(word); });
        IsPictureName(word);
        names.emplace_back(word);
    }
    const FolderOrder order{"/from", "/to", "png", Collisions::Numbered};
    const auto plan = PlanFolder(order, names, [](const std::filesystem::path& path) { return path; });
    fuzz::Require(plan.size() <= names.size(), "no file is planned that was not named");
}

void TakeArguments(const std::vector<std::string>& words) {
    const Command& command = FindCommand(words[0]);
    const Arguments arguments({words.begin() + 1, words.end()}, OptionsOf(command));
    fuzz::Require(arguments.Count() < words.size(), "no word is made up");
    Try([&] { ExpectArguments(command, arguments); });
    Try([&] { BatchWorkFrom(arguments, {}); });
    Try([&] { FormatFrom(arguments); });
    Try([&] { SizeFrom(std::nullopt, arguments); });
    Try([&] { RequiredSizeFrom(words.back(), arguments); });
    for (const std::size_t own : {0u, 1u}) {
        // Fewer words were refused before; a list names a file to read.
        if (arguments.Count() >= own + 2 && !arguments.Has("--list")) {
            Try([&] { CallFrom(arguments, own); });
            Try([&] { CallFrom(arguments, own, TargetPlace::AtTheEnd); });
        }
    }
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    const auto words = WordsOf({reinterpret_cast<const char*>(bytes), count});
    if (words.empty()) {
        return;
    }
    Try([&] { TakeArguments(words); });
    for (const std::string& word : words) {
        TakeNumbers(word);
        Printable(word);
    }
    TakeNames(words);
    NearestWord(words[0], words);
}
