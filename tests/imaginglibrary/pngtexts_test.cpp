// Texts of PNG files: what is UTF-8, and how much may be in one.
#include "imaginglibrary/codecs/png/pngtexts.h"

#include "imaginglibrary/codecs/png/pngproperties.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"

#include <zlib.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

TEST(PngTexts, CharactersOfUtf8AreKnownAtTheirLimits) {
    for (const std::string& text :
         {"\xC2\x80"s, "\xDF\xBF"s, "\xE0\xA0\x80"s, "\xED\x9F\xBF"s, "\xEE\x80\x80"s, "\xEF\xBF\xBF"s,
          "\xF0\x90\x80\x80"s, "\xF4\x8F\xBF\xBF"s, "plain \xC3\xA9 and plain"s, "\xF3\xBF\xBF\xBF\xC3\xA9"s}) {
        EXPECT_TRUE(NeedsUtf8(text)) << text;
    }
}

TEST(PngTexts, WhatIsNoCharacterMakesATextNoUtf8) {
    for (const std::string& text :
         {"\x80"s,         "\xBF"s,         "\xC0\x80"s,         "\xC1\xBF"s,         "\xE0\x9F\xBF"s,
          "\xED\xA0\x80"s, "\xED\xBF\xBF"s, "\xF0\x8F\xBF\xBF"s, "\xF4\x90\x80\x80"s, "\xF5\x80\x80\x80"s,
          "\xFF"s,         "\xC3"s,         "\xE2\x82"s,         "\xF0\x90\x80"s,     "\xC3("s,
          "\xE2\x82("s,    "\xE2(\x82"s,    "\xF0\x90\x80("s,    "\xC3\xC3"s,         "\xC3\xA9\x80"s}) {
        EXPECT_FALSE(NeedsUtf8(text)) << text;
    }
}

TEST(PngTexts, AsciiNeedsNoUtf8) {
    EXPECT_FALSE(NeedsUtf8(""));
    EXPECT_FALSE(NeedsUtf8("\x01 to \x7F"));
}

TEST(PngTexts, InflatedTextMayBeAsLongAsIsAllowed) {
    const std::string text(40000, 'x');
    uLongf size = compressBound(40000);
    std::string data(size, '\0');
    compress(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(text.data()), 40000);
    data.resize(size);
    std::size_t made = 0;
    EXPECT_EQ(Inflated(data, 40000, made), text);
    EXPECT_EQ(made, 40000u);
    made = 0;
    EXPECT_EQ(Inflated(data, 39999, made), std::nullopt);
    made = 0;
    EXPECT_EQ(Inflated(data.substr(0, data.size() - 5), 40000, made), std::nullopt) << "cut";
}

PropertyList ItemsBefore(const std::string& chunks) {
    std::string bytes = MakePng({}, [](unsigned, unsigned, unsigned) { return 7u; });
    bytes.insert(FindChunk(bytes, "IDAT"), chunks);
    return PropertiesIn(PngCodec(), bytes);
}

TEST(PngTexts, LastChunkWithinTheLimitIsRead) {
    std::string chunks;
    for (std::size_t i = 0; i + 1 < MaximumMetadataEntries; ++i) {
        chunks += PngChunk("prVt", "");
    }
    EXPECT_EQ(TagsOf(ItemsBefore(chunks + PngChunk("tEXt", "Title\0t"s) + PngChunk("tEXt", "Author\0a"s))),
              std::vector<std::uint32_t>{0x0320});
}

TEST(PngTexts, ChunksShareWhatIsAllowed) {
    const auto textOf = [](const std::string& keyword, std::size_t bytes) {
        return PngChunk("tEXt", (keyword + '\0').append(bytes, 'x'));
    };
    constexpr std::size_t Half = MaximumMetadataBytes / 2;
    EXPECT_EQ(TagsOf(ItemsBefore(textOf("Title", Half) + textOf("Author", Half) + textOf("Source", 9))),
              (std::vector<std::uint32_t>{0x0320, 0x0110}));
    // With their keywords and what ends them they are just as long together.
    EXPECT_EQ(TagsOf(ItemsBefore(textOf("Title", Half - 6) + textOf("Author", Half - 7) + textOf("Source", 9))),
              (std::vector<std::uint32_t>{0x0320, 0x013B}));
}

TEST(PngTexts, ChunksOfOneLengthHaveThatLength) {
    EXPECT_EQ(ItemsBefore(PngChunk("hIST", std::string(512, 'x'))).Items(),
              std::vector<Property>{BytesProperty(0x5113, PropertyType::Short, std::string(512, 'x'))});
    EXPECT_TRUE(ItemsBefore(PngChunk("hIST", "odd")).Items().empty());
    EXPECT_TRUE(ItemsBefore(PngChunk("sRGB", "\0\0"s)).Items().empty());
    EXPECT_TRUE(ItemsBefore(PngChunk("cHRM", std::string(33, '\1'))).Items().empty());
    EXPECT_TRUE(ItemsBefore(PngChunk("gAMA", std::string(5, '\1'))).Items().empty());
}

TEST(PngTexts, TextIsWrittenUpToHalfOfWhatAReaderAllows) {
    constexpr std::size_t Most = MaximumMetadataBytes / 2;
    const auto longest = MakePngMetadata(ListOf({AsciiProperty(0x0320, std::string(Most, 'x'))}));
    ASSERT_EQ(longest.texts.size(), 1u);
    EXPECT_EQ(longest.texts.front().text.size(), Most);
    EXPECT_TRUE(MakePngMetadata(ListOf({AsciiProperty(0x0320, std::string(Most + 1, 'x'))})).texts.empty());
}

TEST(PngTexts, ExifIsWrittenUpToHalfOfWhatAReaderAllows) {
    // A block of one long value has 26 bytes before it.
    const auto exifOf = [](std::size_t bytes) {
        return MakePngMetadata(ListOf({BytesProperty(0xC000, PropertyType::Undefined, std::string(bytes, 'x'))})).exif;
    };
    EXPECT_EQ(exifOf(MaximumMetadataBytes / 2 - 26).size(), MaximumMetadataBytes / 2);
    EXPECT_TRUE(exifOf(MaximumMetadataBytes / 2 - 25).empty());
}

} // namespace
