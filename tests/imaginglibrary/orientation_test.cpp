// The orientation, taken out of EXIF blocks and XMP packets; and all metadata taken out.
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/codecs/metadata/xmporientation.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

const std::string Bound = "<rdf:Description xmlns:tiff=\"http://ns.adobe.com/tiff/1.0/\" ";

TEST(XmpOrientation, AttributeBecomesBlanks) {
    const std::string attribute = "tiff:Orientation=\"6\"";
    const std::string head = Bound + "tiff:Make=\"a\" ";
    const std::string tail = " tiff:Model='tiff:Orientation=\"8\"'/> tiff:Orientation=\"3\"";
    EXPECT_EQ(WithoutOrientation(head + attribute + tail), head + std::string(attribute.size(), ' ') + tail);
    EXPECT_EQ(WithoutOrientation(head + "tiff:Orientation = '6'/>"), head + std::string(22, ' ') + "/>");
}

TEST(XmpOrientation, ElementBecomesBlanks) {
    for (const std::string element :
         {"<tiff:Orientation>6</tiff:Orientation>", "<tiff:Orientation a=\"/>\">6</tiff:Orientation>",
          "<tiff:Orientation/>", "<tiff:Orientation rdf:value=\"6\" />"}) {
        const std::string tail = "<tiff:Make>tiff:Orientation</tiff:Make></rdf:Description>";
        EXPECT_EQ(WithoutOrientation(Bound + ">" + element + tail),
                  Bound + ">" + std::string(element.size(), ' ') + tail);
    }
}

TEST(XmpOrientation, EveryPrefixOfTheNamespaceCounts) {
    const std::string head = "<a xmlns:t='http://ns.adobe.com/tiff/1.0/' xmlns:u = \"http://ns.adobe.com/tiff/1.0/\" ";
    EXPECT_EQ(WithoutOrientation(head + "t:Orientation='1' u:Orientation='2' v:Orientation='3'/>"),
              head + std::string(17, ' ') + " " + std::string(17, ' ') + " v:Orientation='3'/>");
}

TEST(XmpOrientation, PrefixIsTheOneBeforeTheNamespace) {
    const std::string head = "<a " + std::string(100, ' ') +
                             "xmlns:b='other' xmlns:t='http://ns.adobe.com/tiff/1.0/' " + "xmlns:c='another' ";
    EXPECT_EQ(WithoutOrientation(head + "b:Orientation='1' t:Orientation='2' c:Orientation='3'/>"),
              head + "b:Orientation='1' " + std::string(17, ' ') + " c:Orientation='3'/>");
}

TEST(XmpOrientation, PrefixMayBeLongAndOneOfMany) {
    std::string head = "<a ";
    for (int i = 0; i < 20; ++i) {
        head += "xmlns:" + std::string(80, 't') + std::to_string(i) + "='http://ns.adobe.com/tiff/1.0/' ";
    }
    const std::string last = std::string(80, 't') + "19:Orientation='6'";
    EXPECT_EQ(WithoutOrientation(head + last + "/>"), head + std::string(last.size(), ' ') + "/>");
}

TEST(XmpOrientation, OnlyTagsGiveANamespaceItsPrefix) {
    const std::string binding = "xmlns:q=\"http://ns.adobe.com/tiff/1.0/\"";
    for (const std::string& other : {"<!--" + binding + "-->", "<b note='" + binding + "'/>", binding,
                                     "<b xmlns:q=\"http://ns.adobe.com/tiff/1.0/more\"/>"s}) {
        const std::string head = Bound + ">" + other;
        EXPECT_EQ(WithoutOrientation(head + "<b q:Orientation='6'/>"), head + "<b q:Orientation='6'/>");
    }
}

TEST(XmpOrientation, WhatIsNoneStays) {
    for (const std::string& packet :
         {"<a tiff:Orientation='6'/>"s, // without the namespace
          Bound + "/><!-- <tiff:Orientation>6</tiff:Orientation> -->"s,
          Bound + "/><![CDATA[<tiff:Orientation>6</tiff:Orientation>]]>"s,
          Bound + "/><?x <tiff:Orientation>6</tiff:Orientation> ?>"s,
          Bound + "tiff:OrientationOfIt='6' a:Orientation='6'/><tiff:Orientations>6</tiff:Orientations>"s}) {
        EXPECT_EQ(WithoutOrientation(packet), packet);
    }
}

// What stands behind the text "tiff:Orientation" in a packet that has it once, with the rest as it was.
std::string Blanked(std::string packet, const std::string& what) {
    const std::size_t at = packet.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return packet.replace(at, what.size(), what.size(), ' ');
}

TEST(XmpOrientation, IsSoughtBehindMarkupOfEveryKind) {
    const std::string element = "<tiff:Orientation>6</tiff:Orientation>";
    for (const std::string markup : {"<!-- > <tiff:Orientation> -- -->", "<!---->", "<!-- -> <tiff:Orientation> -->",
                                     "<![CDATA[ > ]] <tiff:Orientation> ]]>", "<![CDATA[]]>",
                                     "<![CDATA[ ]> <tiff:Orientation> ]]>", "<?x > <tiff:Orientation> ?>", "<?\?>",
                                     "<a b>", "<a b=c>", "<a b='>'>", "<a b=\"'>\" c>", "</a>", "<a/>", "<>"}) {
        EXPECT_EQ(WithoutOrientation(Bound + ">" + markup + element), Blanked(Bound + ">" + markup + element, element))
            << markup;
    }
}

TEST(XmpOrientation, AttributeMayStandAmongAnyBlanks) {
    for (const std::string attribute : {"tiff:Orientation='6'", "tiff:Orientation =\"6\"", "tiff:Orientation\t=\n'6'",
                                        "tiff:Orientation\r= \"'\"", "tiff:Orientation=''"}) {
        for (const std::string before : {"\t", "\r\n", "a='/>'\n", "a=\"'\""}) {
            const std::string packet = Bound + before + attribute + "\tb='7'\n/>";
            EXPECT_EQ(WithoutOrientation(packet), Blanked(packet, attribute)) << packet;
        }
    }
}

TEST(XmpOrientation, ElementMayHaveAnyBlankBehindItsName) {
    for (const std::string blank : {" ", "\t", "\r", "\n"}) {
        const std::string element = "<tiff:Orientation" + blank + ">6</tiff:Orientation>";
        const std::string alone = "<tiff:Orientation" + blank + "/>";
        EXPECT_EQ(WithoutOrientation(Bound + ">" + element + "x"), Blanked(Bound + ">" + element + "x", element));
        EXPECT_EQ(WithoutOrientation(Bound + ">" + alone + "x<a/></tiff:Orientation>"),
                  Blanked(Bound + ">" + alone + "x<a/></tiff:Orientation>", alone));
    }
}

TEST(XmpOrientation, WhatDoesNotEndStays) {
    for (const std::string& rest :
         {"tiff:Orientation='6"s, "tiff:Orientation='6\"/>"s, "><tiff:Orientation>6</tiff:Orientation"s,
          "><tiff:Orientation>6"s, "><tiff:Orientation a='/>"s, "><!-- <tiff:Orientation/>"s,
          "><![CDATA[<tiff:Orientation/>"s, "><?x <tiff:Orientation/>"s}) {
        EXPECT_EQ(WithoutOrientation(Bound + rest), Bound + rest);
    }
}

TEST(XmpOrientation, BrokenPacketsKeepTheirLength) {
    const std::string whole = Bound +
                              "tiff:Orientation='6'><tiff:Orientation a='b'>6</tiff:Orientation><!-- --><?x ?>" +
                              "<![CDATA[ ]]></rdf:Description>";
    for (std::size_t bytes = 0; bytes <= whole.size(); ++bytes) {
        const std::string packet = whole.substr(0, bytes);
        EXPECT_EQ(WithoutOrientation(packet).size(), bytes);
        for (const char broken : {'<', '>', '"', '\'', '/'}) {
            std::string spoiled = whole;
            spoiled[std::min(bytes, whole.size() - 1)] = broken;
            EXPECT_EQ(WithoutOrientation(spoiled).size(), whole.size());
        }
    }
}

// A block whose main directory has the orientation between others, and a directory behind each pointer.
ExifSpec TurnedSpec(bool isBig) {
    const auto word = [=](std::uint64_t value) { return tests::NumberBytes(isBig, value, 2); };
    return {.isBigEndian = isBig,
            .main = {{0x010F, 2, 6, "maker\0"s}, {0x0112, 3, 1, word(6)}, {0x0132, 2, 4, "now\0"s}},
            .exif = {{0x8827, 3, 1, word(100)}, {0x927C, 7, 9, "the note "s}},
            .gps = {{0x0001, 2, 2, "N\0"s}},
            .interop = {{0x0001, 2, 4, "R98\0"s}}};
}

PropertyList ListWith(const std::string& block) {
    PropertyList items;
    const std::vector<std::uint8_t> bytes(block.begin(), block.end());
    ReadExif(bytes, ExifThumbnail::Keep, items);
    items.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(bytes));
    return items;
}

TEST(Orientation, GoesAndEverythingElseStaysAtItsPlace) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(TurnedSpec(isBig));
        auto items = ListWith(block);
        const auto before = items;
        RemoveOrientation(items);
        EXPECT_EQ(items.Find(0x0112), nullptr);
        for (const Codec* codec : {&JpegCodec(), &PngCodec()}) {
            const std::string written = WrittenWith(*codec, items);
            const auto read = PropertiesIn(*codec, written);
            EXPECT_EQ(read.Find(0x0112), nullptr);
            ExpectItems(read, {*before.Find(0x010F), *before.Find(0x0132), *before.Find(0x8827), *before.Find(0x927C),
                               *before.Find(0x0001), *before.Find(0x5041)});
            const std::size_t start = written.find(isBig ? "MM\0*"s : "II*\0"s);
            EXPECT_EQ(written.find("the note ") - start, block.find("the note "));
        }
    }
}

TEST(Orientation, PointersBehindItAreFollowedByLaterChanges) {
    auto items = ListWith(MakeExif(TurnedSpec(false)));
    RemoveOrientation(items);
    items.Set(AsciiProperty(0xA434, "a lens that is new in the directory of EXIF"));
    const auto read = PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), items));
    ExpectItems(read, {*items.Find(0xA434), *items.Find(0x927C), *items.Find(0x0001), *items.Find(0x5041)});
    EXPECT_EQ(read.Find(0x0112), nullptr);
}

TEST(Orientation, ThatStandsTwiceGoesTwice) {
    auto spec = TurnedSpec(false);
    spec.main.push_back(spec.main[1]);
    auto items = ListWith(MakeExif(spec));
    RemoveOrientation(items);
    EXPECT_EQ(PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), items)).Find(0x0112), nullptr);
}

TEST(Orientation, BlockWithNothingElseGoes) {
    auto items = ListWith(MakeExif({.main = {{0x0112, 3, 1, "\6\0"s}}}));
    RemoveOrientation(items);
    EXPECT_EQ(items.SourceExif(), nullptr);
    EXPECT_EQ(WrittenWith(JpegCodec(), items).find("Exif"), std::string::npos);
}

TEST(Orientation, GoesFromABrokenBlockToo) {
    auto items = ListWith(MakeExif(TurnedSpec(false)).substr(0, 8 + 2 + 5 * 12));
    ASSERT_NE(items.Find(0x0112), nullptr);
    RemoveOrientation(items);
    EXPECT_EQ(PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), items)).Find(0x0112), nullptr);
}

TEST(Orientation, GoesFromXmpToo) {
    PropertyList items = ListOf({XmpProperty(Bound + "tiff:Orientation='6'/>")});
    RemoveOrientation(items);
    EXPECT_EQ(XmpOf(items), Bound + std::string(20, ' ') + "/>");
    PropertyList none;
    RemoveOrientation(none);
    EXPECT_TRUE(none.Items().empty());
}

TEST(Orientation, SpoiledBlocksNeverCrash) {
    for (const bool isBig : {false, true}) {
        const std::string whole = MakeExif(TurnedSpec(isBig));
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x08, 0x80, 0xFF}) {
                std::string spoiled = whole;
                spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
                auto items = ListWith(spoiled);
                RemoveOrientation(items);
                items.Set(AsciiProperty(0xA434, "lens"));
                EXPECT_TRUE(OpenBytes(JpegCodec(), WrittenWith(JpegCodec(), items)).Ok());
            }
        }
    }
}

TEST(Metadata, AreAllTakenOutButForAProfileThatIsToBeKept) {
    const Property profile = BytesProperty(0x8773, PropertyType::Byte, "profile");
    for (const ProfileFate fate : {ProfileFate::Kept, ProfileFate::Removed}) {
        auto items = ListWith(MakeExif(TurnedSpec(false)));
        items.Set(profile);
        items.Set(XmpProperty("<x/>"));
        RemoveMetadata(items, fate);
        EXPECT_EQ(items.SourceExif(), nullptr);
        EXPECT_EQ(items.Items(), fate == ProfileFate::Kept ? std::vector{profile} : std::vector<Property>());
    }
}

} // namespace
