// The property items of JPEG files.
#include "imaginglibrary/codecs/jpeg/jpegstream.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::size_t BehindStart = 2;

std::string JpegComment(const std::string& text) { return "\xFF\xFE" + NumberBytes(true, text.size() + 2, 2) + text; }

std::string WithMarkers(const std::string& markers, const JpegFile& file = {}) {
    return MakeJpeg(file).insert(BehindStart, markers);
}

std::uint16_t ShortAt(const Property& property, std::size_t index) {
    std::uint16_t number = 0;
    std::memcpy(&number, property.value.data() + 2 * index, sizeof number);
    return number;
}

TEST(JpegProperties, ExifAndCommentAndTablesComeInThisOrder) {
    const std::string exif = MakeExif({.isBigEndian = true, .main = {{0x010F, 2, 6, std::string("maker\0", 6)}}});
    const auto properties = PropertiesIn(JpegCodec(), WithMarkers(JpegComment("remark") + ExifMarker(exif)));
    EXPECT_EQ(TagsOf(properties), (std::vector<std::uint32_t>{0x010F, 0x9286, 0x5091, 0x5090}));
    EXPECT_EQ(*properties.Find(0x010F), AsciiProperty(0x010F, "maker"));
    EXPECT_EQ(*properties.Find(0x9286), AsciiProperty(0x9286, "remark"));
}

TEST(JpegProperties, CommentOfExifStays) {
    const std::string exif = MakeExif({.exif = {{0x9286, 7, 12, std::string("ASCII\0\0\0user", 12)}}});
    const auto properties = PropertiesIn(JpegCodec(), WithMarkers(JpegComment("remark") + ExifMarker(exif)));
    EXPECT_EQ(*properties.Find(0x9286),
              BytesProperty(0x9286, PropertyType::Undefined, std::string("ASCII\0\0\0user", 12)));
}

TEST(JpegProperties, TablesAreInNaturalOrder) {
    const auto properties = PropertiesIn(JpegCodec(), MakeJpeg({.quality = 50}));
    const Property& luminance = *properties.Find(0x5090);
    const Property& chrominance = *properties.Find(0x5091);
    EXPECT_EQ(luminance.type, PropertyType::Short);
    ASSERT_EQ(luminance.value.size(), 128u);
    ASSERT_EQ(chrominance.value.size(), 128u);
    // The first row of the standard's tables.
    const std::vector<std::uint16_t> standardLuminance = {16, 11, 10, 16, 24, 40, 51, 61};
    const std::vector<std::uint16_t> standardChrominance = {17, 18, 24, 47, 99, 99, 99, 99};
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(ShortAt(luminance, i), standardLuminance[i]);
        EXPECT_EQ(ShortAt(chrominance, i), standardChrominance[i]);
    }
}

TEST(JpegProperties, GreyHasNoChrominanceTable) {
    const auto properties = PropertiesIn(JpegCodec(), MakeJpeg({.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE}));
    EXPECT_EQ(TagsOf(properties), std::vector<std::uint32_t>{0x5090});
}

TEST(JpegProperties, OtherMarkersOfTheSameNumberArePassedOver) {
    const std::string other = "http://ns.adobe.com/xap/1.0/";
    const std::string marker = "\xFF\xE1" + NumberBytes(true, other.size() + 2, 2) + other;
    const std::string exif = MakeExif({.main = {{0x0112, 3, 1, NumberBytes(false, 3, 2)}}});
    const auto properties = PropertiesIn(JpegCodec(), WithMarkers(marker + ExifMarker(exif)));
    EXPECT_EQ(*properties.Find(0x0112), ShortProperty(0x0112, 3));
}

TEST(JpegProperties, SpoiledExifNeverKeepsAPictureFromOpening) {
    const std::string exif = MakeExif({.main = {{0x010F, 2, 6, std::string("maker\0", 6)}}});
    for (std::size_t at = 0; at < exif.size(); ++at) {
        std::string spoiled = exif;
        spoiled[at] = static_cast<char>(spoiled[at] ^ 0xFF);
        EXPECT_TRUE(OpenBytes(JpegCodec(), WithMarkers(ExifMarker(spoiled))).Ok());
    }
}

TEST(JpegProperties, QuantisationTableThatCannotBeIsNoItem) {
    for (const char number : {'\4', '\x7F', '\xFF'}) {
        std::string jpeg = MakeJpeg({});
        jpeg[FindMarker(jpeg, 0xC0) + 12] = number; // of the first component
        const auto properties = PropertiesIn(JpegCodec(), jpeg);
        EXPECT_EQ(properties.Find(0x5090), nullptr);
        EXPECT_NE(properties.Find(0x5091), nullptr);
    }
}

TEST(JpegProperties, MarkersBeyondTheLimitArePassedOver) {
    std::string markers;
    while (markers.size() < (20u << 20)) {
        markers += JpegComment(std::string(65533, 'x'));
    }
    const std::string exif = MakeExif({.main = {{0x0112, 3, 1, NumberBytes(false, 3, 2)}}});
    const auto picture = OpenBytes(JpegCodec(), WithMarkers(markers + ExifMarker(exif)));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Properties().Find(0x0112), nullptr);
    EXPECT_EQ(ReadAllRows(**picture), Status::Ok);
}

// A million of a kind before what counts: tens of seconds where the time is not linear.
TEST(JpegProperties, EndlessSegmentsAreReadInLinearTime) {
    constexpr int Million = 1000000;
    const std::string nameless = std::string("\xFF\xE1\x00\x02", 4);
    const std::string nameOnly = "\xFF\xE1" + NumberBytes(true, 8, 2) + std::string("Exif\0\0", 6);
    const std::string noProfile = "\xFF\xE2" + NumberBytes(true, 5, 2) + "MPF";
    const std::string exif = ExifMarker(MakeExif({.main = {{0x0112, 3, 1, NumberBytes(false, 3, 2)}}}));
    for (const std::string& segment : {JpegComment(""), nameless, nameOnly, noProfile}) {
        std::string endless;
        endless.reserve(segment.size() * Million);
        for (int i = 0; i < Million; ++i) {
            endless += segment;
        }
        const auto properties = PropertiesIn(JpegCodec(), WithMarkers(endless + JpegComment("remark") + exif));
        ExpectItems(properties, {ShortProperty(0x0112, 3), AsciiProperty(0x9286, "remark")});
    }
}

std::vector<std::string> KeptSegments(const std::string& jpeg) {
    const auto stream = JpegStream::Open(std::make_shared<MemoryInput>(jpeg), JpegMarkers::Keep);
    std::vector<std::string> contents;
    for (const auto* kept = (*stream)->Header().marker_list; kept != nullptr; kept = kept->next) {
        contents.emplace_back(reinterpret_cast<const char*>(kept->data), kept->data_length);
    }
    return contents;
}

std::string ProfilePart(unsigned number) {
    return std::string("ICC_PROFILE\0", 12) + NumberBytes(true, number, 2) + std::string(40000, 'p');
}

TEST(JpegProperties, SegmentsAreKeptWholeAndInOrderUpToTheNumberThatHasAMeaning) {
    std::string markers = ExifMarker("first") + JpegComment("one") + JpegComment("two") + ExifMarker("second");
    for (unsigned i = 0; i < 257; ++i) {
        markers += "\xFF\xE2" + NumberBytes(true, ProfilePart(i).size() + 2, 2) + ProfilePart(i);
    }
    const auto kept = KeptSegments(WithMarkers(markers));
    ASSERT_EQ(kept.size(), 2u + 255);
    EXPECT_EQ(kept[0], std::string("Exif\0\0first", 11));
    EXPECT_EQ(kept[1], "one");
    for (unsigned i = 0; i < 255; ++i) {
        EXPECT_EQ(kept[2 + i], ProfilePart(i)) << i;
    }
}

TEST(JpegProperties, CutOrSpoiledSegmentsGiveAPictureOrAStatus) {
    const std::string profile = ProfilePart(1).substr(0, 40);
    const std::string markers =
        ExifMarker("a block") + JpegComment("remark") + "\xFF\xE2" + NumberBytes(true, profile.size() + 2, 2) + profile;
    const std::string whole = WithMarkers(markers);
    for (std::size_t at = BehindStart; at < BehindStart + markers.size(); ++at) {
        EXPECT_EQ(OpenBytes(JpegCodec(), whole.substr(0, at)).GetStatus(), UndecodableContent) << at;
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string spoiled = whole;
            spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
            ReadAllRows(JpegCodec(), spoiled);
        }
    }
}

TEST(JpegProperties, SegmentShorterThanItsLengthFieldCountsAsEmpty) {
    for (const char length : {'\0', '\1'}) {
        const std::string marker = std::string("\xFF\xFE\0", 3) + length;
        const auto properties = PropertiesIn(JpegCodec(), WithMarkers(marker + JpegComment("remark")));
        ExpectItems(properties, {AsciiProperty(0x9286, "remark")});
    }
}

const std::vector<Property> JpegCameraItems = {
    AsciiProperty(0x010F, "maker"),
    ShortProperty(0x0112, 6),
    NumbersProperty<std::uint32_t>(0x829A, PropertyType::Rational, {1, 250}),
    NumbersProperty<std::int32_t>(0x9204, PropertyType::SRational, {-1, 3}),
    BytesProperty(0x927C, PropertyType::Undefined, "a maker's note"),
    AsciiProperty(0x0001, "N"),
    AsciiProperty(0x5041, "R98"),
    ShortProperty(0x5023, 6),
    BytesProperty(0x501B, PropertyType::Byte, "\xFF\xD8 thumbnail \xFF\xD9"),
};

TEST(JpegProperties, WhatIsWrittenComesBack) {
    auto items = JpegCameraItems;
    items.push_back(AsciiProperty(0x9286, "remark"));
    const auto properties = PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), ListOf(items)));
    ASSERT_EQ(properties.Items().size(), items.size() + 2); // and the quantisation tables
    EXPECT_EQ(std::vector<Property>(properties.Items().begin(), properties.Items().end() - 2), items);
}

TEST(JpegProperties, ExifStandsDirectlyBehindJfif) {
    const std::string bytes = WrittenWith(JpegCodec(), ListOf(JpegCameraItems));
    constexpr std::size_t BehindJfif = 2 + 18;
    EXPECT_EQ(FindMarker(bytes, 0xE1), BehindJfif);
    EXPECT_EQ(bytes.substr(BehindJfif + 4, 6), std::string("Exif\0\0", 6));
}

TEST(JpegProperties, TextCommentIsNoPartOfExif) {
    const std::string bytes = WrittenWith(JpegCodec(), ListOf({AsciiProperty(0x9286, "remark")}));
    EXPECT_EQ(FindMarker(bytes, 0xE1), std::string::npos);
    const std::size_t at = FindMarker(bytes, 0xFE);
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(bytes.substr(at + 2, 8), std::string("\0\x08remark", 8));
}

TEST(JpegProperties, OtherCommentIsPartOfExif) {
    const std::vector<Property> items = {
        BytesProperty(0x9286, PropertyType::Undefined, std::string("ASCII\0\0\0me", 10))};
    const std::string bytes = WrittenWith(JpegCodec(), ListOf(items));
    EXPECT_EQ(FindMarker(bytes, 0xFE), std::string::npos);
    ExpectItems(PropertiesIn(JpegCodec(), bytes), items);
}

TEST(JpegProperties, NothingToWriteLeavesTheFileAsItWas) {
    const std::string plain = WrittenWith(JpegCodec(), {});
    EXPECT_EQ(FindMarker(plain, 0xE1), std::string::npos);
    for (const Property& item : {ShortProperty(0x5090, 1), ShortProperty(0x0103, 5), AsciiProperty(0x9286, ""),
                                 BytesProperty(0x501B, PropertyType::Byte, "thumbnail")}) {
        EXPECT_EQ(WrittenWith(JpegCodec(), ListOf({item})), plain) << std::hex << item.tag;
    }
}

TEST(JpegProperties, WhatFitsNoMarkerIsLeftOut) {
    auto items = JpegCameraItems;
    items.push_back(BytesProperty(0xC000, PropertyType::Undefined, std::string(70000, 'x')));
    items.push_back(AsciiProperty(0x9286, std::string(70000, 'y')));
    const auto properties = PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), ListOf(items)));
    EXPECT_EQ(properties.Find(0xC000), nullptr);
    EXPECT_EQ(properties.Find(0x501B), nullptr);
    ExpectItems(properties, {JpegCameraItems.begin(), JpegCameraItems.end() - 2});
    EXPECT_EQ(*properties.Find(0x9286), AsciiProperty(0x9286, std::string(65533, 'y')));
}

} // namespace
