// Mistyped words, and options in all their spellings.
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/spelling.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

using WordList = std::vector<std::string>;

constexpr Option Spelled[] = {{"--bold", nullptr, "", 'b'},
                              {"--italic", nullptr, "", 'i'},
                              {"--jobs", "N", "", 'j'},
                              {"--plain", nullptr, ""},
                              {"--text", "TEXT", ""}};

WordList PlainOf(const Arguments& arguments) {
    WordList plain;
    for (std::size_t i = 0; i < arguments.Count(); ++i) {
        plain.push_back(arguments[i]);
    }
    return plain;
}

std::string WrongUsageOf(const WordList& words) {
    try {
        const Arguments arguments(words, Spelled);
    } catch (const WrongUsage& usage) {
        return usage.text;
    }
    return "";
}

TEST(Spelling, DistanceCountsEachKindOfMistakeOnce) {
    EXPECT_EQ(Distance("", ""), 0u);
    EXPECT_EQ(Distance("", "abc"), 3u);
    EXPECT_EQ(Distance("abc", ""), 3u);
    EXPECT_EQ(Distance("crop", "crop"), 0u);
    EXPECT_EQ(Distance("crop", "crops"), 1u);
    EXPECT_EQ(Distance("crops", "crop"), 1u);
    EXPECT_EQ(Distance("crop", "drop"), 1u);
    EXPECT_EQ(Distance("crop", "corp"), 1u);
    EXPECT_EQ(Distance("abcd", "badc"), 2u);
    EXPECT_EQ(Distance("ca", "abc"), 3u);
    EXPECT_EQ(Distance("convert", "covnetr"), 2u);
}

TEST(Spelling, NeighboursAreAtMostTwoMistakesAway) {
    EXPECT_EQ(NearestWord("convrt", {"folder", "convert"}), "convert");
    EXPECT_EQ(NearestWord("cnvrt", {"convert"}), "convert");
    EXPECT_EQ(NearestWord("covnetr", {"convert"}), "convert");
    EXPECT_EQ(NearestWord("cnvertxy", {"convert"}), std::nullopt);
}

TEST(Spelling, MistakesAreUnderHalfOfTheWord) {
    EXPECT_EQ(NearestWord("sz", {"size"}), std::nullopt);
    EXPECT_EQ(NearestWord("co", {"cop"}), std::nullopt); // one is half of two
    EXPECT_EQ(NearestWord("crp", {"crop"}), "crop");     // one is not half of three
    EXPECT_EQ(NearestWord("siez", {"size"}), "size");
    EXPECT_EQ(NearestWord("sezi", {"size"}), std::nullopt); // two are half of four
    EXPECT_EQ(NearestWord("ssizz", {"size"}), "size");      // but not of five
}

TEST(Spelling, NearestOfSeveralIsMeantAndTheFirstOfEquals) {
    EXPECT_EQ(NearestWord("ration", {"rotations", "ratios", "rations"}), "ratios");
    EXPECT_EQ(NearestWord("foldr", {"foldery", "folder"}), "folder");
}

TEST(Spelling, LetterCaseAndDashesDoNotCount) {
    EXPECT_EQ(NearestWord("CONVERT", {"convert"}), "convert");
    EXPECT_EQ(NearestWord("--Job", {"--jobs"}), "--jobs");
    EXPECT_EQ(NearestWord("--sz", {"--size"}), std::nullopt); // the dashes make no word longer
    EXPECT_EQ(NearestWord("--", {"--b"}), std::nullopt);
}

TEST(Spelling, CommandsAndOptionsAreSuggested) {
    EXPECT_EQ(WrongUsageOf({"--bodl"}), "unknown option '--bodl', did you mean '--bold'?");
    EXPECT_EQ(WrongUsageOf({"--hepl"}), "unknown option '--hepl', did you mean '--help'?");
    EXPECT_EQ(WrongUsageOf({"--blink"}), "unknown option '--blink'");
    try {
        FindCommand("rezise");
        FAIL();
    } catch (const WrongUsage& usage) {
        EXPECT_EQ(usage.text, "unknown command 'rezise', did you mean 'resize'?");
    }
}

TEST(OptionSpellings, ValueMayStandBehindASign) {
    const Arguments arguments({"--text=a=b", "--jobs=", "c"}, Spelled);
    EXPECT_EQ(arguments.ValueOf("--text"), "a=b");
    EXPECT_EQ(arguments.ValueOf("--jobs"), "");
    EXPECT_EQ(PlainOf(arguments), WordList{"c"});
}

TEST(OptionSpellings, OptionWithoutAValueTakesNone) {
    EXPECT_EQ(WrongUsageOf({"--bold=yes"}), "--bold takes no value");
    EXPECT_EQ(WrongUsageOf({"--bold="}), "--bold takes no value");
}

TEST(OptionSpellings, LettersStandForNames) {
    const Arguments arguments({"-b", "a", "-j", "4"}, Spelled);
    EXPECT_TRUE(arguments.Has("--bold"));
    EXPECT_EQ(arguments.ValueOf("--jobs"), "4");
    EXPECT_EQ(PlainOf(arguments), WordList{"a"});
}

TEST(OptionSpellings, LettersShareADashAndTheLastMayHaveAValue) {
    const Arguments together({"-bij4"}, Spelled);
    EXPECT_TRUE(together.Has("--bold") && together.Has("--italic"));
    EXPECT_EQ(together.ValueOf("--jobs"), "4");
    const Arguments apart({"-ij", "8", "a"}, Spelled);
    EXPECT_EQ(apart.ValueOf("--jobs"), "8");
    EXPECT_EQ(PlainOf(apart), WordList{"a"});
    EXPECT_FALSE(apart.Has("--bold"));
}

TEST(OptionSpellings, HelpHasALetterEverywhere) {
    EXPECT_TRUE(Arguments({"-h"}, Spelled).Has("--help"));
    EXPECT_TRUE(Arguments({"-bh"}, Spelled).Has("--help"));
}

TEST(OptionSpellings, UnknownLettersAndMissingValuesAreWrong) {
    EXPECT_EQ(WrongUsageOf({"-x"}), "unknown option '-x'; a file of the name -x is ./-x");
    EXPECT_EQ(WrongUsageOf({"-bx"}), "unknown option '-x'; a file of the name -bx is ./-bx");
    EXPECT_EQ(WrongUsageOf({"-p"}), "unknown option '-p'; a file of the name -p is ./-p"); // --plain has no letter
    EXPECT_EQ(WrongUsageOf({"a", "-j"}), "missing value: --jobs N");
    EXPECT_EQ(WrongUsageOf({"--jobs"}), "missing value: --jobs N");
}

TEST(OptionSpellings, NumbersBelowZeroAndALoneDashArePlain) {
    EXPECT_EQ(PlainOf(Arguments({"-5", "-0", "-9x", "-"}, Spelled)), (WordList{"-5", "-0", "-9x", "-"}));
    EXPECT_EQ(PlainOf(Arguments({"--", "-b", "--jobs"}, Spelled)), (WordList{"-b", "--jobs"}));
}

TEST(CommandTable, NoTwoOptionsOfACommandShareANameOrALetter) {
    for (const Command& command : Commands()) {
        std::vector<std::string> spellings{"--help", "-h"};
        for (const Option& option : OptionsOf(command)) {
            spellings.emplace_back(option.name);
            if (option.letter != 0) {
                spellings.push_back(std::string("-") + option.letter);
                EXPECT_FALSE(option.letter >= '0' && option.letter <= '9') << option.name;
            }
        }
        std::sort(spellings.begin(), spellings.end());
        EXPECT_EQ(std::adjacent_find(spellings.begin(), spellings.end()), spellings.end()) << command.name;
    }
}

TEST(CommandTable, EveryCommandHasTwoOrThreeExamplesOfItself) {
    for (const Command& command : Commands()) {
        EXPECT_TRUE(command.examples.size() == 2 || command.examples.size() == 3) << command.name;
        for (const Example& example : command.examples) {
            EXPECT_TRUE(std::string(example.words).starts_with(std::string(command.name) + " ")) << example.words;
        }
    }
}

} // namespace
