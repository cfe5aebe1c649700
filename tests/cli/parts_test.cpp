// The parts of the command line that work without files: words, numbers and the progress bar.
#include "cli/formats.h"
#include "cli/job.h"
#include "cli/numbers.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/text.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

constexpr Option Known[] = {{"--bold", nullptr, ""}, {"--size", "N", ""}};

std::vector<std::string> PlainWords(const Arguments& arguments) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < arguments.Count(); ++i) {
        words.push_back(arguments[i]);
    }
    return words;
}

TEST(Options, AreToldFromPlainWordsAnywhere) {
    const Arguments arguments({"--size", "5", "a", "--bold", "b"}, Known);
    EXPECT_EQ(PlainWords(arguments), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(arguments.Has("--bold"));
    EXPECT_EQ(arguments.ValueOf("--size"), "5");
}

TEST(Options, AreAbsentUnlessGiven) {
    const Arguments arguments({"a"}, Known);
    EXPECT_FALSE(arguments.Has("--bold"));
    EXPECT_EQ(arguments.ValueOf("--size"), std::nullopt);
}

TEST(Options, EndWithTwoDashes) {
    const Arguments arguments({"--bold", "--", "--size", "--"}, Known);
    EXPECT_EQ(PlainWords(arguments), (std::vector<std::string>{"--size", "--"}));
    EXPECT_EQ(arguments.ValueOf("--size"), std::nullopt);
}

TEST(Options, LastValueHolds) { EXPECT_EQ(Arguments({"--size", "1", "--size", "2"}, Known).ValueOf("--size"), "2"); }

TEST(Options, ValueMayLookLikeAnOption) { EXPECT_EQ(Arguments({"--size", "--"}, Known).ValueOf("--size"), "--"); }

TEST(Options, SingleDashBeginsAPlainWord) { EXPECT_EQ(PlainWords(Arguments({"-5"}, Known)).front(), "-5"); }

TEST(Options, UnknownAndIncompleteOnesAreWrong) {
    EXPECT_THROW(Arguments({"--blink"}, Known), WrongUsage);
    EXPECT_THROW(Arguments({"--bold=yes"}, Known), WrongUsage);
    EXPECT_THROW(Arguments({"--size"}, Known), WrongUsage);
}

TEST(Numbers, AreTakenWithinTheirBounds) {
    EXPECT_EQ(WholeNumber("1", "number", 1, 3), 1);
    EXPECT_EQ(WholeNumber("3", "number", 1, 3), 3);
    EXPECT_THROW(WholeNumber("0", "number", 1, 3), WrongUsage);
    EXPECT_THROW(WholeNumber("4", "number", 1, 3), WrongUsage);
    EXPECT_EQ(PositiveNumber("2147483647", "number"), 2147483647);
    EXPECT_EQ(Position("-12", "X"), -12);
}

TEST(Numbers, AreWhollyNumbers) {
    for (const char* text : {"", " 1", "1 ", "+1", "1.0", "0x10", "one", "2147483648", "99999999999999999999"}) {
        EXPECT_THROW(WholeNumber(text, "number", 0), WrongUsage) << text;
    }
}

TEST(Numbers, ColorsAreSixDigits) {
    const Color color = ColorFrom("01fFa0");
    EXPECT_EQ(color.red, 0x01);
    EXPECT_EQ(color.green, 0xFF);
    EXPECT_EQ(color.blue, 0xA0);
    for (const char* text : {"", "fff", "0000000", "00000g", "-00001", "#00000", "0x0000"}) {
        EXPECT_THROW(ColorFrom(text), WrongUsage) << text;
    }
}

TEST(Formats, FollowTheLastExtensionInAnyLetterCase) {
    EXPECT_NO_THROW(RequireFormat("folder.gif/a.jpg.PNG"));
    for (const char* name : {"a", "a.", ".png", "png", "a.png/b", "a.webp", "a.ico", "a.tmp"}) {
        EXPECT_THROW(RequireFormat(name), WrongUsage) << name;
    }
}

TEST(Formats, WordsAreTakenInAnyLetterCase) {
    EXPECT_STREQ(FormatOfWord("TiFF"), "tiff");
    EXPECT_STREQ(FormatOfWord("jpg"), "jpg");
    for (const char* word : {"", ".png", "ico", "sgl", "tmp"}) {
        EXPECT_THROW(FormatOfWord(word), WrongUsage) << word;
    }
}

TEST(Formats, ExtensionsOfOtherProgramsAreKnownToo) {
    const std::pair<const char*, const char*> names[] = {{"a.BMP", "bmp"}, {"b.dib", "bmp"},  {"c.Rle", "bmp"},
                                                         {"d.jpe", "jpg"}, {"e.JFIF", "jpg"}, {"f.jpeg", "jpeg"},
                                                         {"g.tif", "tif"}, {"h.png", "png"},  {"i.gif", "gif"}};
    for (const auto& [name, format] : names) {
        EXPECT_STREQ(FormatOfName(name), format);
    }
    for (const char* name : {"a", "a.ico", "a.", ".png", "png", "a.png/b"}) {
        EXPECT_EQ(FormatOfName(name), nullptr) << name;
    }
}

TEST(Jobs, NamesThatAreBlankAreWrong) {
    EXPECT_THROW(RequireName(""), WrongUsage);
    EXPECT_THROW(RequireName("  "), WrongUsage);
    EXPECT_NO_THROW(RequireName(" a "));
}

TEST(PrintableText, HasAQuestionMarkForEachControlCharacter) {
    EXPECT_EQ(Printable("a\tb\x1B[2J\r\n\x7F"), "a\tb?[2J???");
}

#ifndef _WIN32 // the code page decides there
TEST(PrintableText, HasNoLongControlCharactersEither) {
    EXPECT_EQ(Printable("\xC2\x80\xC2\x9F."), "??.");
    EXPECT_EQ(Printable("\xC2\xA0\xC3\x9F\xE2\x82\x9F\xC2"), "\xC2\xA0\xC3\x9F\xE2\x82\x9F\xC2");
}
#endif

TEST(ProgressBar, FillsFromLeftToRight) {
    EXPECT_EQ(ProgressLine(0, 4), "[----------------------------------------] 0 of 4");
    EXPECT_EQ(ProgressLine(1, 4), "[##########------------------------------] 1 of 4");
    EXPECT_EQ(ProgressLine(4, 4), "[########################################] 4 of 4");
    EXPECT_EQ(PercentLine(0), "[----------------------------------------] 0 %");
    EXPECT_EQ(PercentLine(50), "[####################--------------------] 50 %");
    EXPECT_EQ(PercentLine(100), "[########################################] 100 %");
}

} // namespace
