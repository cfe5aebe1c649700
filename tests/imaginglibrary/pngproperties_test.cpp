// The property items of PNG files.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"

#include <zlib.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

std::string Plain() {
    return MakePng({}, [](unsigned x, unsigned y, unsigned) { return (x + y) & 255; });
}

// The items of a file with these chunks before its image data.
PropertyList ItemsWith(const std::string& chunks) {
    std::string bytes = Plain();
    bytes.insert(FindChunk(bytes, "IDAT"), chunks);
    return PropertiesIn(PngCodec(), bytes);
}

std::string Deflated(const std::string& text) {
    uLongf size = compressBound(static_cast<uLong>(text.size()));
    std::string data(size, '\0');
    compress(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
             static_cast<uLong>(text.size()));
    data.resize(size);
    return data;
}

std::string Text(const std::string& keyword, const std::string& text) {
    return PngChunk("tEXt", keyword + '\0' + text);
}

std::string CompressedText(const std::string& keyword, const std::string& text) {
    return PngChunk("zTXt", keyword + "\0\0"s + Deflated(text));
}

std::string Long(std::uint32_t number) { return tests::NumberBytes(true, number, 4); }

std::string SmallExif() { return MakeExif({.isBigEndian = true, .main = {{0x010F, 2, 6, "maker\0"s}}}); }

TEST(PngProperties, KnownKeywordsAreItems) {
    const auto properties =
        ItemsWith(Text("Title", "t") + Text("Author", "a") + Text("Description", "d") + Text("Copyright", "c") +
                  Text("Software", "s") + Text("Source", "o") + Text("Comment", "m") + Text("Disclaimer", "x"));
    EXPECT_EQ(properties.Items(),
              (std::vector<Property>{AsciiProperty(0x0320, "t"), AsciiProperty(0x013B, "a"), AsciiProperty(0x010E, "d"),
                                     AsciiProperty(0x8298, "c"), AsciiProperty(0x0131, "s"), AsciiProperty(0x0110, "o"),
                                     AsciiProperty(0x9286, "m")}));
}

TEST(PngProperties, BytesOfTextsStayAsTheyAre) {
    EXPECT_EQ(ItemsWith(Text("Title", "\xE4\xF6")).Items(), std::vector<Property>{AsciiProperty(0x0320, "\xE4\xF6")});
    EXPECT_EQ(ItemsWith(CompressedText("Title", "\xE4\xF6")).Items(),
              std::vector<Property>{AsciiProperty(0x0320, "\xE4\xF6")});
}

TEST(PngProperties, InternationalTextsAreUtf8) {
    const auto plain = PngChunk("iTXt", "Title\0\0\0de\0Titel\0\xC3\xA4"s);
    const auto compressed = PngChunk("iTXt", "Title\0\1\0\0\0"s + Deflated("\xC3\xA4"));
    for (const std::string& chunk : {plain, compressed}) {
        EXPECT_EQ(ItemsWith(chunk).Items(), std::vector<Property>{AsciiProperty(0x0320, "\xC3\xA4")});
    }
}

TEST(PngProperties, FirstTextOfAKeywordCounts) {
    EXPECT_EQ(ItemsWith(Text("Title", "one") + Text("Title", "two")).Items(),
              std::vector<Property>{AsciiProperty(0x0320, "one")});
}

TEST(PngProperties, GammaIsAFraction) {
    EXPECT_EQ(ItemsWith(PngChunk("gAMA", Long(45455))).Items(),
              std::vector<Property>{NumbersProperty<std::uint32_t>(0x0301, PropertyType::Rational, {100000, 45455})});
}

TEST(PngProperties, ChromaticitiesAreFractions) {
    std::string points;
    for (std::uint32_t i = 1; i <= 8; ++i) {
        points += Long(i * 1000);
    }
    constexpr std::uint32_t One = 100000;
    EXPECT_EQ(ItemsWith(PngChunk("cHRM", points)).Items(),
              (std::vector<Property>{
                  NumbersProperty<std::uint32_t>(0x013E, PropertyType::Rational, {1000, One, 2000, One}),
                  NumbersProperty<std::uint32_t>(0x013F, PropertyType::Rational,
                                                 {3000, One, 4000, One, 5000, One, 6000, One, 7000, One, 8000, One})}));
}

// Each is what its own chunk says, not what follows from another.
TEST(PngProperties, RenderingIntentMakesNoOtherItems) {
    EXPECT_EQ(ItemsWith(PngChunk("sRGB", "\2")).Items(),
              std::vector<Property>{BytesProperty(0x0303, PropertyType::Byte, "\2")});
}

TEST(PngProperties, DotsPerUnitAreItems) {
    EXPECT_EQ(ItemsWith(PngChunk("pHYs", Long(3000) + Long(4000) + "\1")).Items(),
              (std::vector<Property>{BytesProperty(0x5110, PropertyType::Byte, "\1"), LongProperty(0x5111, 3000),
                                     LongProperty(0x5112, 4000)}));
}

TEST(PngProperties, HistogramIsAnItem) {
    EXPECT_EQ(ItemsWith(PngChunk("hIST", "\1\2\3\4")).Items(),
              std::vector<Property>{NumbersProperty<std::uint16_t>(0x5113, PropertyType::Short, {0x0102, 0x0304})});
}

TEST(PngProperties, ExifComesLastAndTextsStay) {
    const std::string exif = MakeExif({.main = {{0x010F, 2, 6, "maker\0"s}, {0x0131, 2, 5, "exif\0"s}},
                                       .thumbnail = {{0x0103, 3, 1, "\6\0"s}},
                                       .thumbnailData = "\xFF\xD8"});
    const auto properties = ItemsWith(PngChunk("eXIf", exif) + PngChunk("tIME", "1234567") + Text("Software", "text"));
    EXPECT_EQ(properties.Items(),
              (std::vector<Property>{AsciiProperty(0x0131, "text"), AsciiProperty(0x010F, "maker")}));
}

TEST(PngProperties, WhatStandsBehindThePixelsIsNotRead) {
    std::string bytes = Plain();
    bytes.insert(FindChunk(bytes, "IEND"), Text("Title", "late"));
    EXPECT_TRUE(PropertiesIn(PngCodec(), bytes).Items().empty());
}

TEST(PngProperties, BrokenChunksArePassedOver) {
    std::string badChecksum = Text("Title", "broken");
    badChecksum.back() = static_cast<char>(badChecksum.back() ^ 1);
    const std::string deflated = Deflated("a text that is cut");
    for (const std::string& chunk :
         {badChecksum, PngChunk("tEXt", "Title"), PngChunk("zTXt", "Title\0"s),
          PngChunk("zTXt", "Title\0\1"s + deflated),
          PngChunk("zTXt", "Title\0\0"s + deflated.substr(0, deflated.size() / 2)), PngChunk("iTXt", "Title\0\0"s),
          PngChunk("iTXt", "Title\0\0\0no more"s), PngChunk("gAMA", Long(0)), PngChunk("gAMA", "abc"),
          PngChunk("cHRM", "short"), PngChunk("sRGB", ""), PngChunk("pHYs", "short"), PngChunk("hIST", "odd"),
          PngChunk("hIST", std::string(514, 'x')), PngChunk("eXIf", "no EXIF")}) {
        const auto properties = ItemsWith(chunk + PngChunk("gAMA", Long(7)));
        EXPECT_EQ(TagsOf(properties).size(), chunk.substr(4, 4) == "gAMA" ? 0u : 1u) << chunk.substr(4, 4);
    }
}

TEST(PngProperties, WrongChecksumSpoilsItsOwnChunkOnly) {
    std::string gamma = PngChunk("gAMA", Long(45455));
    gamma.back() = static_cast<char>(gamma.back() ^ 1);
    EXPECT_EQ(TagsOf(ItemsWith(gamma + PngChunk("sRGB", "\2") + Text("Title", "t"))),
              (std::vector<std::uint32_t>{0x0320, 0x0303}));
}

// Text that grows a thousandfold is let in once, not once a chunk.
TEST(PngProperties, TextsThatGrowTooLongEndTheReadingOfTexts) {
    const std::string bomb = CompressedText("Comment", std::string(MaximumMetadataBytes + 1, 'x'));
    std::string many;
    for (int i = 0; i < 1000; ++i) {
        many += bomb;
    }
    const auto start = std::chrono::steady_clock::now();
    ItemsWith(many);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(PngProperties, SpoiledBytesNeverCrash) {
    const std::string chunks = Text("Title", "t") + CompressedText("Comment", "compressed") +
                               PngChunk("iTXt", "Author\0\1\0\0\0"s + Deflated("author")) +
                               PngChunk("cHRM", std::string(32, '\1')) + PngChunk("eXIf", SmallExif());
    std::string whole = Plain();
    const std::size_t start = FindChunk(whole, "IDAT");
    whole.insert(start, chunks);
    for (std::size_t at = start; at < start + chunks.size(); ++at) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string spoiled = whole;
            spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
            const auto opened = OpenBytes(PngCodec(), spoiled);
            EXPECT_TRUE(opened.Ok() || opened.GetStatus() == UndecodableContent);
        }
    }
}

// Each is a few kilobytes in the file.
TEST(PngProperties, TextsThatGrowBeyondTheLimitArePassedOver) {
    const std::string half = CompressedText("Title", std::string(MaximumMetadataBytes / 2, 'x')) +
                             CompressedText("Comment", std::string(MaximumMetadataBytes / 2, 'x'));
    EXPECT_EQ(TagsOf(ItemsWith(half + Text("Author", "a"))), (std::vector<std::uint32_t>{0x0320, 0x013B}));
}

TEST(PngProperties, ChunksBeyondTheLimitArePassedOver) {
    std::string chunks;
    for (std::size_t i = 0; i < MaximumMetadataEntries; ++i) {
        chunks += PngChunk("prVt", "");
    }
    EXPECT_TRUE(ItemsWith(chunks + Text("Title", "far behind")).Items().empty());
}

// What every file of our own has.
const std::vector<Property> WritersItems = {
    NumbersProperty<std::uint32_t>(0x0301, PropertyType::Rational, {100000, 45455}),
    BytesProperty(0x0303, PropertyType::Byte, "\0"s), BytesProperty(0x5110, PropertyType::Byte, "\1"),
    LongProperty(0x5111, 3780), LongProperty(0x5112, 3780)};

TEST(PngProperties, WhatIsWrittenComesBack) {
    std::vector<Property> items = {AsciiProperty(0x0320, "title"),
                                   AsciiProperty(0x9286, "remark"),
                                   AsciiProperty(0x010F, "maker"),
                                   NumbersProperty<std::uint32_t>(0x013E, PropertyType::Rational, {3, 10, 3, 10}),
                                   ShortProperty(0x8827, 100),
                                   NumbersProperty<std::int32_t>(0x9204, PropertyType::SRational, {-1, 3}),
                                   BytesProperty(0x927C, PropertyType::Undefined, "a maker's note"),
                                   AsciiProperty(0x0001, "N"),
                                   AsciiProperty(0x5041, "R98")};
    items.insert(items.begin() + 2, WritersItems.begin(), WritersItems.end());
    EXPECT_EQ(PropertiesIn(PngCodec(), WrittenWith(PngCodec(), ListOf(items))).Items(), items);
}

TEST(PngProperties, TextsAloneNeedNoExif) {
    const std::string bytes =
        WrittenWith(PngCodec(), ListOf({AsciiProperty(0x0131, "tool"), AsciiProperty(0x9286, "me")}));
    EXPECT_EQ(ChunkData(bytes, "tEXt"), "Software\0tool"s);
    EXPECT_EQ(ChunkData(bytes, "eXIf"), std::nullopt);
    EXPECT_LT(FindChunk(bytes, "tEXt"), FindChunk(bytes, "IDAT"));
}

TEST(PngProperties, ExifHoldsTheTextsToo) {
    const std::string bytes =
        WrittenWith(PngCodec(), ListOf({AsciiProperty(0x0131, "tool"), AsciiProperty(0x010F, "maker")}));
    const std::string exif = ChunkData(bytes, "eXIf").value_or("");
    EXPECT_NE(exif.find("tool"), std::string::npos);
    EXPECT_NE(exif.find("maker"), std::string::npos);
}

TEST(PngProperties, TextBeyondAsciiIsInternationalWhereItIsUtf8) {
    for (const std::string& text : {"\xC3\xA4"s, "\xE2\x82\xAC"s, "\xF0\x9F\x98\x80"s}) {
        const std::string bytes = WrittenWith(PngCodec(), ListOf({AsciiProperty(0x0320, text)}));
        EXPECT_EQ(ChunkData(bytes, "iTXt"), "Title\0\0\0\0\0"s + text);
        EXPECT_EQ(ChunkData(bytes, "tEXt"), std::nullopt);
    }
    for (const std::string& text :
         {"\xE4"s, "\xC0\x80"s, "\xED\xA0\x80"s, "\xF4\x90\x80\x80"s, "\xE2\x82"s, "\xC3("s}) {
        const std::string bytes = WrittenWith(PngCodec(), ListOf({AsciiProperty(0x0320, text)}));
        EXPECT_EQ(ChunkData(bytes, "tEXt"), "Title\0"s + text);
    }
}

TEST(PngProperties, NothingToWriteLeavesTheFileAsItWas) {
    const std::string plain = WrittenWith(PngCodec(), {});
    EXPECT_EQ(WrittenWith(PngCodec(), ListOf(WritersItems)), plain);
    for (const Property& item : {ShortProperty(0x5090, 1), ShortProperty(0x0103, 5), AsciiProperty(0x9286, ""),
                                 BytesProperty(0x501B, PropertyType::Byte, "thumbnail")}) {
        EXPECT_EQ(WrittenWith(PngCodec(), ListOf({item})), plain) << std::hex << item.tag;
    }
}

TEST(PngProperties, WhatNoReaderWouldTakeIsLeftOut) {
    const std::string bytes = WrittenWith(
        PngCodec(), ListOf({AsciiProperty(0x0320, std::string(MaximumMetadataBytes, 'x')), AsciiProperty(0x010F, "m"),
                            BytesProperty(0xC000, PropertyType::Byte, std::string(MaximumMetadataBytes, 'x'))}));
    auto items = WritersItems;
    items.push_back(AsciiProperty(0x010F, "m"));
    EXPECT_EQ(PropertiesIn(PngCodec(), bytes).Items(), items);
}

} // namespace
