// Replacing in 8-bit text, and to wide text and back.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(ReplaceAll, ReplacesEveryOccurrence) {
    EXPECT_EQ(ReplaceAll("a.tmp.b.tmp", ".tmp", ".txt"), "a.txt.b.txt");
    EXPECT_EQ(ReplaceAll("a.txt", ".tmp", ".txt"), "a.txt");
    EXPECT_EQ(ReplaceAll("", ".tmp", ".txt"), "");
}

TEST(ReplaceAll, DoesNotLookAtWhatItPutIn) { EXPECT_EQ(ReplaceAll("aa", "a", "aba"), "abaaba"); }

TEST(Text, AsciiGoesThereAndBack) {
    EXPECT_EQ(ToWide("C:\\a b.png"), u"C:\\a b.png");
    EXPECT_EQ(ToNarrow(u"C:\\a b.png"), "C:\\a b.png");
    EXPECT_EQ(ToWide(""), u"");
}

#ifdef _WIN32

TEST(Text, EveryByteOfTheCodePageComesBack) {
    for (int byte = 0xA0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(ToNarrow(ToWide(text)), text);
    }
}

#else

TEST(Text, Utf8BecomesUtf16) {
    EXPECT_EQ(ToWide("\u00e4\u20ac\U0001F600"), u"\u00e4\u20ac\U0001F600");
    EXPECT_EQ(ToNarrow(u"\u00e4\u20ac\U0001F600"), "\u00e4\u20ac\U0001F600");
}

TEST(Text, AnyBytesSurviveTheWayThereAndBack) {
    const std::string names[] = {"\x80",
                                 "\xff\xfe",
                                 "a\xe4"
                                 "b",
                                 "\xc3",
                                 "\xe2\x82",
                                 "\xf0\x9f\x98",
                                 "\xed\xa0\x80",
                                 "\xf4\x90\x80\x80",
                                 "\xc0\xaf"};
    for (const std::string& name : names) {
        EXPECT_EQ(ToNarrow(ToWide(name)), name);
    }
}

TEST(Text, LoneSurrogatesBecomeTheReplacementCharacter) {
    const char16_t lone[] = {0xD800, 'x', 0};
    EXPECT_EQ(ToNarrow(lone), "\uFFFDx");
}

#endif

} // namespace
