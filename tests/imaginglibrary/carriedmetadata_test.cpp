// Metadata that have to share a tag, or a place, with others, on their way from file to file.
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

constexpr std::uint32_t CommentBeside = 0x01009286;
constexpr std::uint32_t DilutionBeside = 0x0100000B; // of precision, in the GPS directory

std::string JpegWithMarkers(const std::string& markers) { return MakeJpeg({}).insert(2, markers); }

std::string CommentMarker(const std::string& text) {
    return "\xFF\xFE" + tests::NumberBytes(true, text.size() + 2, 2) + text;
}

const ExifField ProcessingSoftware = {0x000B, 2, 8, "a robot\0"s};
const ExifField Dilution = {0x000B, 5, 1, "\5\0\0\0\2\0\0\0"s};
const Property SoftwareItem = AsciiProperty(0x000B, "a robot");

std::string WrittenFrom(const std::string& jpeg, const Codec& codec) {
    return WrittenWith(codec, PropertiesIn(JpegCodec(), jpeg));
}

TEST(CarriedMetadata, ProcessingSoftwareMakesNoGpsDirectory) {
    const std::string source = JpegWithMarkers(ExifMarker(MakeExif({.main = {ProcessingSoftware}})));
    for (const Codec* codec : {&JpegCodec(), &TiffCodec(), &PngCodec()}) {
        const std::string written = WrittenFrom(source, *codec);
        ExpectItems(PropertiesIn(*codec, written), {SoftwareItem});
        EXPECT_EQ(written.find("\x25\x88\4\0"s), std::string::npos); // no entry that points to a GPS directory
    }
    EXPECT_NE(WrittenWith(JpegCodec(), ListOf({AsciiProperty(0x0001, "N")})).find("\x25\x88\4\0"s), std::string::npos);
}

TEST(CarriedMetadata, MainAndGpsDirectoryMayUseTheSameTag) {
    const std::string source = JpegWithMarkers(ExifMarker(MakeExif({.main = {ProcessingSoftware}, .gps = {Dilution}})));
    auto dilution = NumbersProperty<std::uint32_t>(DilutionBeside, PropertyType::Rational, {5, 2});
    const auto read = PropertiesIn(JpegCodec(), source);
    EXPECT_EQ(TagsOf(read), (std::vector<std::uint32_t>{0x000B, 0x5091, 0x5090, DilutionBeside}));
    for (const Codec* codec : {&JpegCodec(), &TiffCodec(), &PngCodec()}) {
        ExpectItems(PropertiesIn(*codec, WrittenFrom(source, *codec)), {SoftwareItem, dilution});
        ExpectItems(PropertiesIn(*codec, WrittenWith(*codec, ListOf({SoftwareItem, dilution}))),
                    {SoftwareItem, dilution});
    }
}

TEST(CarriedMetadata, GpsNumberAloneKeepsItsTag) {
    const std::string source = JpegWithMarkers(ExifMarker(MakeExif({.gps = {Dilution}})));
    const auto dilution = NumbersProperty<std::uint32_t>(0x000B, PropertyType::Rational, {5, 2});
    ExpectItems(PropertiesIn(TiffCodec(), WrittenFrom(source, TiffCodec())), {dilution});
}

TEST(CarriedMetadata, CommentBesideTheOneOfExifIsKept) {
    for (const std::string& user : {"ASCII\0\0\0    "s, "ASCII\0\0\0user"s}) {
        const std::string exif = MakeExif({.exif = {{0x9286, 7, 12, user}}});
        const std::string source = JpegWithMarkers(CommentMarker("remark") + ExifMarker(exif));
        const auto userItem = BytesProperty(0x9286, PropertyType::Undefined, user);
        const auto read = PropertiesIn(JpegCodec(), source);
        EXPECT_EQ(TagsOf(read), (std::vector<std::uint32_t>{0x9286, 0x5091, 0x5090, CommentBeside}));
        const std::vector<Property> both = {userItem, AsciiProperty(CommentBeside, "remark")};
        ExpectItems(read, both);
        ExpectItems(PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), ListOf(both))), both);
        ExpectItems(PropertiesIn(PngCodec(), WrittenFrom(source, PngCodec())), {AsciiProperty(0x9286, "remark")});
        ExpectItems(PropertiesIn(GifCodec(), WrittenFrom(source, GifCodec())), {AsciiProperty(0x9286, "remark")});
    }
}

TEST(CarriedMetadata, TiffHasOneCommentAndABlankOneGivesWay) {
    const auto beside = AsciiProperty(CommentBeside, "remark");
    const auto user = BytesProperty(0x9286, PropertyType::Undefined, "ASCII\0\0\0user"s);
    for (const std::string& blank : {"ASCII\0\0\0\0 "s, "ASCII\0\0\0"s}) {
        const auto blankItem = BytesProperty(0x9286, PropertyType::Undefined, blank);
        ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({blankItem, beside}))),
                    {BytesProperty(0x9286, PropertyType::Undefined, "ASCII\0\0\0remark"s)});
        ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({blankItem}))), {blankItem});
        const auto umlaut = AsciiProperty(CommentBeside, "\xC3\xBC");
        ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({blankItem, umlaut}))),
                    {BytesProperty(0x9286, PropertyType::Undefined, "\0\0\0\0\0\0\0\0\xC3\xBC"s)});
    }
    ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({user, beside}))), {user});
}

} // namespace
