// XMP packets in every format that has a place for them, whole and in parts.
#include "imaginglibrary/codecs/metadata/md5.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

const std::string PacketSign = "http://ns.adobe.com/xap/1.0/\0"s;
const std::string PartSign = "http://ns.adobe.com/xmp/extension/\0"s;

std::string PacketOf(const std::string& descriptions) {
    return "<x:xmpmeta><rdf:RDF xmlns:rdf='r'>" + descriptions + "</rdf:RDF></x:xmpmeta>";
}

const std::string Title = "<rdf:Description dc:title=\"\xC3\xA9\"/>";
const Property TitleItem = XmpProperty(PacketOf(Title));

std::string App1(const std::string& content) {
    return "\xFF\xE1" + tests::NumberBytes(true, content.size() + 2, 2) + content;
}

std::string Part(const std::string& digest, std::size_t whole, std::size_t at, const std::string& data) {
    return App1(PartSign + digest + tests::NumberBytes(true, whole, 4) + tests::NumberBytes(true, at, 4) + data);
}

const Property* XmpInJpeg(const std::string& segments) {
    static PropertyList properties;
    properties = PropertiesIn(JpegCodec(), MakeJpeg({}).insert(2, segments));
    return properties.Find(700);
}

// A packet that says in either way where the rest is.
const std::string Digits = "0123456789ABCDEF0123456789ABCDEF";
const std::string Attribute = "<rdf:Description a='1' xmpNote:HasExtendedXMP=\"" + Digits + "\"/>";
const std::string Element =
    "<rdf:Description a='1' ><xmpNote:HasExtendedXMP>" + Digits + "</xmpNote:HasExtendedXMP></rdf:Description>";
const std::string Rest = PacketOf("<rdf:Description b='2'/>");

TEST(Xmp, ComesBackFromEveryFormatThatCarriesIt) {
    const std::string large = PacketOf("<rdf:Description x='" + std::string(100000, 'x') + "'/>");
    for (const Codec* codec : {&JpegCodec(), &TiffCodec(), &PngCodec(), &GifCodec()}) {
        const std::string written = WrittenWith(*codec, ListOf({TitleItem}));
        ExpectItems(PropertiesIn(*codec, written), {TitleItem});
        EXPECT_EQ(PropertiesIn(*codec, written).Items().back(), TitleItem);
        if (codec != &JpegCodec()) {
            ExpectItems(PropertiesIn(*codec, WrittenWith(*codec, ListOf({XmpProperty(large)}))), {XmpProperty(large)});
        }
    }
}

TEST(Xmp, StandsWhereReadersLookForIt) {
    const std::string packet = PacketOf(Title);
    EXPECT_NE(WrittenWith(JpegCodec(), ListOf({TitleItem})).find(App1(PacketSign + packet)), std::string::npos);
    EXPECT_EQ(ChunkData(WrittenWith(PngCodec(), ListOf({TitleItem})), "iTXt"), "XML:com.adobe.xmp\0\0\0\0\0"s + packet);
    EXPECT_EQ(ChunkData(WrittenWith(PngCodec(), ListOf({TitleItem})), "eXIf"), std::nullopt);
    const std::string gif = WrittenWith(GifCodec(), ListOf({TitleItem}));
    const std::size_t at = gif.find("!\xFF\x0BXMP DataXMP" + packet + "\1\xFF\xFE");
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(gif.substr(at + 14 + packet.size() + 253, 5), "\3\2\1\0\0"s);
}

TEST(Xmp, WithANulOrBeyondTheLimitIsLeftOut) {
    for (const std::string& packet : {"a\0b"s, std::string(MaximumCarriedBytes + 1, 'x')}) {
        for (const Codec* codec : {&JpegCodec(), &PngCodec(), &GifCodec()}) {
            EXPECT_EQ(WrittenWith(*codec, ListOf({XmpProperty(packet)})), WrittenWith(*codec, {}));
        }
    }
    EXPECT_NE(WrittenWith(PngCodec(), ListOf({XmpProperty("ab\0"s)})), WrittenWith(PngCodec(), {}));
}

TEST(Xmp, PartsOfAJpegArePutTogether) {
    for (const std::string& named : {Attribute, Element}) {
        const std::size_t half = Rest.size() / 2;
        const std::string first = Part(Digits, Rest.size(), 0, Rest.substr(0, half));
        const std::string second = Part(Digits, Rest.size(), half, Rest.substr(half));
        const std::string packet = App1(PacketSign + PacketOf(named));
        const std::string foreign = Part(std::string(32, 'F'), 3, 0, "abc");
        for (const std::string& segments :
             {packet + first + second, packet + second + foreign + first, first + second + packet}) {
            const Property* xmp = XmpInJpeg(segments);
            ASSERT_NE(xmp, nullptr);
            const std::string text(xmp->value.begin(), xmp->value.end());
            EXPECT_NE(text.find("a='1'"), std::string::npos);
            EXPECT_TRUE(text.ends_with("<rdf:Description b='2'/></rdf:RDF></x:xmpmeta>"));
            EXPECT_EQ(text.find("HasExtended"), std::string::npos);
        }
    }
}

TEST(Xmp, PartsThatAreNotAllThereAreLeftOut) {
    const std::string packet = App1(PacketSign + PacketOf(Attribute));
    for (const std::string& parts :
         {""s, Part(Digits, Rest.size(), 0, Rest.substr(0, 10)), Part(Digits, Rest.size(), 1, Rest.substr(1)),
          Part(Digits, Rest.size() + 1, 0, Rest), Part(Digits, 0xFFFFFFFF, 0, Rest),
          Part(Digits, Rest.size(), 0, Rest) + Part(Digits, Rest.size(), 0, Rest), Part(Digits, 4, 0, "text"),
          Part(std::string(32, 'F'), Rest.size(), 0, Rest)}) {
        EXPECT_EQ(*XmpInJpeg(packet + parts), XmpProperty(PacketOf(Attribute)));
    }
}

TEST(Xmp, SpoiledPartsNeverKeepAPictureFromOpening) {
    const std::string segments = App1(PacketSign + PacketOf(Attribute)) + Part(Digits, Rest.size(), 0, Rest);
    for (std::size_t at = 4; at < segments.size(); ++at) {
        std::string spoiled = segments;
        spoiled[at] = static_cast<char>(spoiled[at] ^ 0x5F);
        (void)OpenBytes(JpegCodec(), MakeJpeg({}).insert(2, spoiled));
    }
}

TEST(Xmp, OfJpegIsSplitWhereItFitsNoSegment) {
    constexpr std::size_t MostInOne = 65533 - 29;
    const std::string frame = PacketOf("<rdf:Description x=''/>");
    const auto packetOf = [&](std::size_t size) {
        return PacketOf("<rdf:Description x='" + std::string(size - frame.size(), 'x') + "'/>");
    };
    const std::string one = WrittenWith(JpegCodec(), ListOf({XmpProperty(packetOf(MostInOne))}));
    EXPECT_EQ(one.find(PartSign), std::string::npos);
    ExpectItems(PropertiesIn(JpegCodec(), one), {XmpProperty(packetOf(MostInOne))});

    for (const std::size_t size : {MostInOne + 1, std::size_t{200000}}) {
        const std::string packet = packetOf(size);
        const std::string several = WrittenWith(JpegCodec(), ListOf({XmpProperty(packet + "  \n")}));
        const std::string digest = Md5Digits(packet);
        EXPECT_NE(several.find("xmpNote:HasExtendedXMP=\"" + digest + '"'), std::string::npos);
        EXPECT_NE(
            several.find(PartSign + digest + tests::NumberBytes(true, size, 4) + "\0\0\0\0"s + packet.substr(0, 99)),
            std::string::npos);
        const auto properties = PropertiesIn(JpegCodec(), several);
        const Property& xmp = *properties.Find(700);
        const std::string text(xmp.value.begin(), xmp.value.end());
        EXPECT_NE(text.find("<rdf:Description x='" + std::string(size - frame.size(), 'x') + "'/></rdf:RDF>"),
                  std::string::npos);
        EXPECT_EQ(text.find("HasExtended"), std::string::npos);
    }
}

TEST(Xmp, OfGifWithoutItsTrailerIsPassedOver) {
    const std::string gif = WrittenWith(GifCodec(), ListOf({TitleItem}));
    const std::size_t at = gif.find("\1\xFF\xFE") + 100;
    std::string spoiled = gif;
    spoiled[at] = static_cast<char>(spoiled[at] + 1);
    EXPECT_EQ(PropertiesIn(GifCodec(), spoiled).Find(700), nullptr);
    EXPECT_EQ(std::string(PacketOfGif("too short")), "");
}

TEST(Xmp, BlockOfAnotherApplicationIsNone) {
    std::string gif = WrittenWith(GifCodec(), ListOf({TitleItem}));
    const std::size_t at = gif.find("XMP DataXMP");
    ASSERT_NE(at, std::string::npos);
    gif[at + 10] = 'Q';
    EXPECT_EQ(PropertiesIn(GifCodec(), gif).Find(700), nullptr);
}

TEST(Xmp, OfAnExifBlockGivesWayToTheSegment) {
    const std::string exif = ExifMarker(MakeExif({.main = {{700, 1, 5, "other"}}}));
    EXPECT_EQ(*XmpInJpeg(exif), XmpProperty("other"));
    EXPECT_EQ(*XmpInJpeg(exif + App1(PacketSign + PacketOf(Title))), TitleItem);
}

TEST(Xmp, DigestsAreThoseOfTheStandard) {
    EXPECT_EQ(Md5Digits(""), "D41D8CD98F00B204E9800998ECF8427E");
    EXPECT_EQ(Md5Digits("abc"), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(Md5Digits("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              "57EDF4A22BE3C955AC49DA2E2107B67A");
    for (const std::size_t size : {55u, 56u, 63u, 64u}) { // where the padding takes another block
        EXPECT_EQ(Md5Digits(std::string(size, 'a')), size == 55   ? "EF1772B6DFF9A122358552954AD0DF65"
                                                     : size == 56 ? "3B0C8AC703F828B04C6C197006D17218"
                                                     : size == 63 ? "B06521F39153D618550606BE297466D5"
                                                                  : "014842D480B571495A4A0363793F7367");
    }
}

} // namespace
