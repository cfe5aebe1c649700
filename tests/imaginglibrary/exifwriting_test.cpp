// EXIF blocks as they are put together.
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/core/bytes.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

ExifBlock BlockOf(const std::vector<Property>& items) {
    ExifBlock block;
    for (const Property& item : items) {
        block.Add(item);
    }
    return block;
}

std::vector<Property> Reread(const std::vector<std::uint8_t>& block) {
    PropertyList list;
    ReadExif(block, ExifThumbnail::Keep, list);
    return list.Items();
}

// What stands where in a directory of a block that begins with its header.
std::vector<std::uint16_t> TagsAt(const std::vector<std::uint8_t>& block, std::size_t start) {
    std::vector<std::uint16_t> tags;
    for (std::size_t i = 0; i < LittleEndian16(&block[start]); ++i) {
        tags.push_back(LittleEndian16(&block[start + 2 + 12 * i]));
    }
    return tags;
}

std::uint32_t FieldAt(const std::vector<std::uint8_t>& block, std::size_t start, std::uint16_t tag) {
    const auto tags = TagsAt(block, start);
    const auto index = static_cast<std::size_t>(std::find(tags.begin(), tags.end(), tag) - tags.begin());
    return LittleEndian32(&block.at(start + 2 + 12 * index + 8));
}

TEST(ExifWriting, EveryItemGoesToItsDirectoryInTheOrderOfTags) {
    const auto block =
        BlockOf({AsciiProperty(0x9003, "2026:11:21 09:30:00"), AsciiProperty(0x0110, "model"),
                 BytesProperty(0x9C9B, PropertyType::Byte, "x"), AsciiProperty(0x0001, "N"),
                 AsciiProperty(0x5041, "R98"), ShortProperty(0x8827, 100), AsciiProperty(0x010F, "maker"),
                 ShortProperty(0xA001, 1), AsciiProperty(0x0320, "title"),
                 BytesProperty(0x9286, PropertyType::Undefined, "remark")})
            .MakeBlock();
    ASSERT_EQ(std::string(block.begin(), block.begin() + 8), std::string("II\x2A\0\x08\0\0\0", 8));
    EXPECT_EQ(TagsAt(block, 8), (std::vector<std::uint16_t>{0x010F, 0x0110, 0x0320, 0x8769, 0x8825, 0x9C9B}));
    const std::uint32_t exif = FieldAt(block, 8, 0x8769);
    EXPECT_EQ(TagsAt(block, exif), (std::vector<std::uint16_t>{0x8827, 0x9003, 0x9286, 0xA001, 0xA005}));
    EXPECT_EQ(TagsAt(block, FieldAt(block, 8, 0x8825)), std::vector<std::uint16_t>{0x0001});
    EXPECT_EQ(TagsAt(block, FieldAt(block, exif, 0xA005)), std::vector<std::uint16_t>{0x0001});
}

TEST(ExifWriting, NumbersStandInTheOrderOfTheBlock) {
    const Property number = ShortProperty(0x8827, 0x1234);
    for (const std::endian order : {std::endian::little, std::endian::big}) {
        ExifBlock block(order);
        block.Add(number);
        const auto bytes = block.MakeBlock();
        const std::string text(bytes.begin(), bytes.end());
        EXPECT_EQ(text.substr(0, 4),
                  order == std::endian::big ? std::string("MM\0\x2A", 4) : std::string("II\x2A\0", 4));
        EXPECT_NE(text.find(order == std::endian::big ? "\x12\x34" : "\x34\x12"), std::string::npos);
        EXPECT_EQ(Reread(bytes), std::vector{number});
    }
}

TEST(ExifWriting, TextWithoutItsEndGetsOne) {
    const auto block = BlockOf({BytesProperty(0x010F, PropertyType::Ascii, "maker")}).MakeBlock();
    const std::string bytes(block.begin(), block.end());
    EXPECT_NE(bytes.find(std::string("\x0F\x01\2\0\6\0\0\0", 8)), std::string::npos);
    EXPECT_EQ(Reread(block), std::vector{AsciiProperty(0x010F, "maker")});
}

TEST(ExifWriting, EveryTypeComesBack) {
    const std::vector<Property> items = {
        BytesProperty(0xC000, PropertyType::Byte, "odd"),
        AsciiProperty(0xC001, "a longer text"),
        NumbersProperty<std::uint16_t>(0xC002, PropertyType::Short, {1, 2, 0xFEDC}),
        NumbersProperty<std::uint32_t>(0xC003, PropertyType::Long, {0x12345678}),
        NumbersProperty<std::uint32_t>(0xC004, PropertyType::Rational, {1, 3, 0xFFFFFFFF, 7}),
        BytesProperty(0xC005, PropertyType::Undefined, "undefined"),
        NumbersProperty<std::int32_t>(0xC006, PropertyType::SLong, {-1, 2}),
        NumbersProperty<std::int32_t>(0xC007, PropertyType::SRational, {-1, 3})};
    EXPECT_EQ(Reread(BlockOf(items).MakeBlock()), items);
}

TEST(ExifWriting, ValuesStandAtEvenPositions) {
    const auto block = BlockOf({AsciiProperty(0x010E, "four"), AsciiProperty(0x010F, "sixsix")}).MakeBlock();
    EXPECT_EQ(FieldAt(block, 8, 0x010E) % 2, 0u);
    EXPECT_EQ(FieldAt(block, 8, 0x010F) % 2, 0u);
    EXPECT_EQ(block.size() % 2, 0u);
}

TEST(ExifWriting, TextGetsItsEnd) {
    EXPECT_EQ(Reread(BlockOf({BytesProperty(0x010F, PropertyType::Ascii, "maker")}).MakeBlock()),
              std::vector<Property>{AsciiProperty(0x010F, "maker")});
}

TEST(ExifWriting, NothingMakesNoBlock) {
    EXPECT_TRUE(ExifBlock().MakeBlock().empty());
    EXPECT_TRUE(BlockOf({BytesProperty(0x501B, PropertyType::Byte, "thumbnail")}).MakeBlock().empty());
}

TEST(ExifWriting, LayoutAndOtherFormatsItemsAreLeftOut) {
    for (const std::uint32_t tag :
         {0x00FEu, 0x0102u, 0x0103u, 0x0106u, 0x010Au, 0x0111u, 0x0115u, 0x0116u, 0x0117u, 0x011Cu,
          0x0124u, 0x013Du, 0x0140u, 0x0145u, 0x014Au, 0x0152u, 0x0153u, 0x015Bu, 0x0201u, 0x5090u,
          0x5091u, 0x5100u, 0x5104u, 0x5110u, 0x5113u, 0x8769u, 0x8773u, 0x8825u, 0xA005u, 0x10000u}) {
        EXPECT_TRUE(BlockOf({ShortProperty(tag, 1)}).MakeBlock().empty()) << std::hex << tag;
    }
}

TEST(ExifWriting, ValuesThatAreNoWholeElementsAreLeftOut) {
    EXPECT_TRUE(BlockOf({BytesProperty(0xC000, PropertyType::Short, "abc")}).MakeBlock().empty());
    EXPECT_TRUE(BlockOf({BytesProperty(0xC000, PropertyType::Byte, "")}).MakeBlock().empty());
    EXPECT_TRUE(BlockOf({BytesProperty(0xC000, static_cast<PropertyType>(99), "abc")}).MakeBlock().empty());
}

TEST(ExifWriting, ThumbnailFollowsTheMainDirectory) {
    const std::vector<Property> items = {AsciiProperty(0x010F, "maker"), ShortProperty(0x5023, 6),
                                         NumbersProperty<std::uint32_t>(0x502D, PropertyType::Rational, {72, 1}),
                                         BytesProperty(0x501B, PropertyType::Byte, "\xFF\xD8 thumbnail")};
    const auto block = BlockOf(items).MakeBlock();
    EXPECT_EQ(Reread(block), items);
    const std::uint32_t next = LittleEndian32(&block[8 + 2 + 12]);
    EXPECT_EQ(TagsAt(block, next), (std::vector<std::uint16_t>{0x0103, 0x011A, 0x0201, 0x0202}));
}

TEST(ExifWriting, TooLongABlockLosesItsThumbnailFirst) {
    auto block =
        BlockOf({AsciiProperty(0x010F, "maker"), BytesProperty(0x927C, PropertyType::Undefined, "a maker's note"),
                 BytesProperty(0x501B, PropertyType::Byte, std::string(1000, 'x'))});
    block.Shorten(1000);
    EXPECT_EQ(Reread(block.MakeBlock()),
              (std::vector<Property>{AsciiProperty(0x010F, "maker"),
                                     BytesProperty(0x927C, PropertyType::Undefined, "a maker's note")}));
}

TEST(ExifWriting, TooLongABlockLosesItsLargestValuesNext) {
    const auto long1 = BytesProperty(0x927C, PropertyType::Undefined, std::string(900, 'x'));
    const auto long2 = BytesProperty(0x010E, PropertyType::Ascii, std::string(800, 'y') + '\0');
    auto block = BlockOf({long1, AsciiProperty(0x010F, "maker"), long2});
    auto shorter = block;
    block.Shorten(1000);
    EXPECT_EQ(Reread(block.MakeBlock()), (std::vector<Property>{long2, AsciiProperty(0x010F, "maker")}));
    shorter.Shorten(100);
    EXPECT_EQ(Reread(shorter.MakeBlock()), (std::vector<Property>{AsciiProperty(0x010F, "maker")}));
    shorter.Shorten(10);
    EXPECT_TRUE(shorter.MakeBlock().empty());
}

} // namespace
