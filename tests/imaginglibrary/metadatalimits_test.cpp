// Metadata that are exactly as long as they may be, and those that are one longer.
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

// The items of a JPEG file that was written with these.
PropertyList ThroughJpeg(const std::vector<Property>& items) {
    return PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), ListOf(items)));
}

Property NoteOf(std::size_t bytes) { return BytesProperty(0xC000, PropertyType::Undefined, std::string(bytes, 'x')); }

// A block of one long value has 26 bytes before it. 65,527 bytes of a marker are for the block, whose length is even.
TEST(MetadataLimits, ExifThatJustFitsAMarkerIsWhole) {
    ExpectItems(ThroughJpeg({NoteOf(65500)}), {NoteOf(65500)});
    EXPECT_EQ(ThroughJpeg({NoteOf(65501)}).Find(0xC000), nullptr);
    EXPECT_EQ(ThroughJpeg({NoteOf(65502)}).Find(0xC000), nullptr);
}

TEST(MetadataLimits, BlockThatFillsAMarkerGoesThroughByteForByte) {
    std::string block = MakeExif({.main = {{0xC000, 7, 65501, std::string(65501, 'x')}}});
    block.resize(65527); // without what pads the value
    const auto items = PropertiesIn(JpegCodec(), MakeJpeg({}).insert(2, ExifMarker(block)));
    EXPECT_NE(WrittenWith(JpegCodec(), items).find(ExifMarker(block)), std::string::npos);
}

// Its directory takes 30 bytes.
TEST(MetadataLimits, ThumbnailGoesWhereItIsOneTooMany) {
    const Property thumbnail = BytesProperty(0x501B, PropertyType::Byte, std::string(100, 't'));
    ExpectItems(ThroughJpeg({NoteOf(65370), thumbnail}), {NoteOf(65370), thumbnail});
    const auto without = ThroughJpeg({NoteOf(65371), thumbnail});
    ExpectItems(without, {NoteOf(65371)});
    EXPECT_EQ(without.Find(0x501B), nullptr);
}

TEST(MetadataLimits, LargestValueGoesFirstAndNoMoreThanIsNeeded) {
    const Property larger = BytesProperty(0xC001, PropertyType::Undefined, std::string(40001, 'l'));
    const auto properties = ThroughJpeg({NoteOf(40000), larger, AsciiProperty(0x010F, "maker")});
    ExpectItems(properties, {NoteOf(40000), AsciiProperty(0x010F, "maker")});
    EXPECT_EQ(properties.Find(0xC001), nullptr);
}

TEST(MetadataLimits, CommentOfJpegIsCutBehindTheLastByteThatAMarkerHolds) {
    ExpectItems(ThroughJpeg({AsciiProperty(0x9286, std::string(65532, 'y') + "z")}),
                {AsciiProperty(0x9286, std::string(65532, 'y') + "z")});
    ExpectItems(ThroughJpeg({AsciiProperty(0x9286, std::string(65533, 'y') + "z")}),
                {AsciiProperty(0x9286, std::string(65533, 'y'))});
}

TEST(MetadataLimits, PacketsUpToTheLimitComeBack) {
    const Property longest = XmpProperty(std::string(MaximumCarriedBytes, 'x'));
    for (const Codec* codec : {&TiffCodec(), &PngCodec(), &GifCodec()}) {
        ExpectItems(PropertiesIn(*codec, WrittenWith(*codec, ListOf({longest}))), {longest});
    }
}

std::string ResourceOf(std::size_t wholeBytes) {
    constexpr std::size_t HeadBytes = 12; // sign, number, an empty name and the length
    const std::string data(wholeBytes - HeadBytes, 'r');
    return std::string("8BIM\4\x0A\0\0", 8) + tests::NumberBytes(true, data.size(), 4) + data;
}

TEST(MetadataLimits, ImageResourcesUpToTheLimitComeBack) {
    const Property longest = BytesProperty(0x8649, PropertyType::Byte, ResourceOf(MaximumCarriedBytes));
    ExpectItems(ThroughJpeg({longest}), {longest});
    const Property tooLong = BytesProperty(0x8649, PropertyType::Byte, ResourceOf(MaximumCarriedBytes + 2));
    EXPECT_EQ(ThroughJpeg({tooLong}).Find(0x8649), nullptr);
}

// 65,519 bytes of a segment are for the resources.
TEST(MetadataLimits, ImageResourcesAreSplitWhereASegmentIsFull) {
    for (const std::size_t bytes : {65518u, 65520u}) {
        const Property item = BytesProperty(0x8649, PropertyType::Byte, ResourceOf(bytes));
        const std::string jpeg = WrittenWith(JpegCodec(), ListOf({item}));
        ExpectItems(PropertiesIn(JpegCodec(), jpeg), {item});
        const std::size_t first = FindMarker(jpeg, 0xED);
        ASSERT_NE(first, std::string::npos);
        EXPECT_EQ(jpeg.substr(first + 2, 2), bytes == 65518 ? "\xFF\xFE" : "\xFF\xFF");
        EXPECT_EQ(FindMarker(jpeg, 0xED, first + 2) != std::string::npos, bytes == 65520);
    }
}

} // namespace
