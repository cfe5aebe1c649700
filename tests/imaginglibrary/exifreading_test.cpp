// EXIF blocks as they are read: both byte orders, every type, every directory, and blocks made to do harm.
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

PropertyList ItemsOf(const std::string& block, ExifThumbnail thumbnail = ExifThumbnail::Keep) {
    PropertyList properties;
    ReadExif({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()}, thumbnail, properties);
    return properties;
}

// One entry of every type, and one of each directory.
ExifSpec FullSpec(bool isBig) {
    const auto longs = [=](std::initializer_list<std::uint64_t> numbers) { return NumbersBytes(isBig, numbers, 4); };
    return {.isBigEndian = isBig,
            .main = {{0x010E, 2, 6, std::string("title\0", 6)},
                     {0x0112, 3, 1, NumberBytes(isBig, 6, 2)},
                     {0x011A, 5, 1, longs({300, 1})},
                     {0x4746, 1, 3, "abc"},
                     {0x9C9B, 1, 6, std::string("X\0P\0\0\0", 6)}},
            .exif = {{0x829A, 5, 2, longs({1, 250, 3, 4})},
                     {0x8827, 3, 3, NumbersBytes(isBig, {100, 200, 0xABCD}, 2)},
                     {0x9000, 7, 4, "0230"},
                     {0x9204, 10, 1, longs({0xFFFFFFFF, 3})},
                     {0x9999, 9, 2, longs({0xFFFFFFFE, 7})},
                     {0xA002, 4, 1, longs({0x12345678})}},
            .gps = {{0x0000, 1, 4, std::string("\2\3\0\0", 4)}, {0x0001, 2, 2, std::string("N\0", 2)}},
            .interop = {{0x0001, 2, 4, std::string("R98\0", 4)}, {0x0002, 7, 4, "0100"}},
            .thumbnail = {{0x0103, 3, 1, NumberBytes(isBig, 6, 2)}, {0x011A, 5, 1, longs({72, 1})}},
            .thumbnailData = "\xFF\xD8 thumbnail \xFF\xD9"};
}

const std::vector<Property> FullItems = {
    AsciiProperty(0x010E, "title"),
    ShortProperty(0x0112, 6),
    NumbersProperty<std::uint32_t>(0x011A, PropertyType::Rational, {300, 1}),
    BytesProperty(0x4746, PropertyType::Byte, "abc"),
    BytesProperty(0x9C9B, PropertyType::Byte, std::string("X\0P\0\0\0", 6)),
    NumbersProperty<std::uint32_t>(0x829A, PropertyType::Rational, {1, 250, 3, 4}),
    NumbersProperty<std::uint16_t>(0x8827, PropertyType::Short, {100, 200, 0xABCD}),
    BytesProperty(0x9000, PropertyType::Undefined, "0230"),
    NumbersProperty<std::int32_t>(0x9204, PropertyType::SRational, {-1, 3}),
    NumbersProperty<std::int32_t>(0x9999, PropertyType::SLong, {-2, 7}),
    LongProperty(0xA002, 0x12345678),
    BytesProperty(0x0000, PropertyType::Byte, std::string("\2\3\0\0", 4)),
    AsciiProperty(0x0001, "N"),
    AsciiProperty(0x5041, "R98"),
    BytesProperty(0x5042, PropertyType::Undefined, "0100"),
    ShortProperty(0x5023, 6),
    NumbersProperty<std::uint32_t>(0x502D, PropertyType::Rational, {72, 1}),
    BytesProperty(0x501B, PropertyType::Byte, "\xFF\xD8 thumbnail \xFF\xD9"),
};

TEST(ExifReading, AllDirectoriesAreReadInEitherByteOrder) {
    for (const bool isBig : {false, true}) {
        EXPECT_EQ(ItemsOf(MakeExif(FullSpec(isBig))).Items(), FullItems) << isBig;
    }
}

TEST(ExifReading, ThumbnailIsPassedOverOnDemand) {
    const auto items = ItemsOf(MakeExif(FullSpec(false)), ExifThumbnail::PassOver);
    EXPECT_EQ(items.Items(), std::vector<Property>(FullItems.begin(), FullItems.end() - 3));
}

TEST(ExifReading, ItemThatIsThereStays) {
    PropertyList properties = ListOf({AsciiProperty(0x010E, "first")});
    const std::string block = MakeExif(FullSpec(false));
    ReadExif({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()}, ExifThumbnail::Keep, properties);
    EXPECT_EQ(*properties.Find(0x010E), AsciiProperty(0x010E, "first"));
}

TEST(ExifReading, TextWithoutEndGetsOne) {
    EXPECT_EQ(ItemsOf(MakeExif({.main = {{0x010F, 2, 5, "maker"}}})).Items(),
              std::vector<Property>{AsciiProperty(0x010F, "maker")});
}

TEST(ExifReading, OtherTypesAndEmptyValuesArePassedOver) {
    std::vector<ExifField> fields;
    for (const unsigned type : {0u, 6u, 8u, 11u, 12u, 13u, 14u, 0xFFFFu}) {
        fields.push_back({0x0200 + type % 100, type, 1, "12345678"});
    }
    fields.push_back({0x010E, 2, 0, ""});
    fields.push_back({0x010F, 2, 2, std::string("m\0", 2)});
    EXPECT_EQ(TagsOf(ItemsOf(MakeExif({.main = fields}))), std::vector<std::uint32_t>{0x010F});
}

TEST(ExifReading, CutBlockGivesWhatIsThere) {
    for (const bool isBig : {false, true}) {
        const std::string whole = MakeExif(FullSpec(isBig));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const PropertyList items = ItemsOf(whole.substr(0, size));
            for (const Property& item : items.Items()) {
                EXPECT_NE(std::find(FullItems.begin(), FullItems.end(), item), FullItems.end()) << item.tag;
            }
        }
    }
    const std::string whole = MakeExif(FullSpec(false));
    EXPECT_EQ(ItemsOf(whole.substr(0, whole.size() - 1)).Items().size(), FullItems.size() - 1);
}

TEST(ExifReading, SpoiledBytesNeverCrash) {
    for (const bool isBig : {false, true}) {
        const std::string whole = MakeExif(FullSpec(isBig));
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                std::string spoiled = whole;
                spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
                EXPECT_LT(ItemsOf(spoiled).Items().size(), 100u);
            }
        }
    }
}

TEST(ExifReading, RubbishGivesNothing) {
    for (const std::string& block : {std::string(), std::string("II"), std::string("II\x2B\0\x08\0\0\0", 8),
                                     std::string("MM\x2A\0\0\0\0\x08", 8), std::string(100, '\xFF')}) {
        EXPECT_TRUE(ItemsOf(block).Items().empty());
    }
}

TEST(ExifReading, DirectoriesThatPointAtEachOtherAreReadOnce) {
    const auto pointer = [](unsigned tag, unsigned to) { return ExifField{tag, 4, 1, NumberBytes(false, to, 4)}; };
    const std::vector<ExifField> main = {
        {0x0112, 3, 1, NumberBytes(false, 1, 2)}, pointer(0x8769, 8), pointer(0x8825, 8), pointer(0xA005, 8)};
    const std::string block = std::string("II\x2A\0", 4) + NumberBytes(false, 8, 4) + MakeDirectory(false, main, 8, 8);
    EXPECT_EQ(TagsOf(ItemsOf(block)), std::vector<std::uint32_t>{0x0112});
}

TEST(ExifReading, DirectoryThatIsReadIsNoOtherOneToo) {
    const auto pointer = [](unsigned tag, unsigned to) { return ExifField{tag, 4, 1, NumberBytes(false, to, 4)}; };
    // Tag 1 would be another item in the interoperability directory, and 0x0103 in that of the thumbnail.
    const std::vector<ExifField> main = {{0x0001, 2, 2, std::string("N\0", 2)},
                                         {0x00FE, 4, 1, NumberBytes(false, 1, 4)},
                                         {0x0103, 3, 1, NumberBytes(false, 6, 2)},
                                         pointer(0xA005, 8)};
    const std::string block = std::string("II\x2A\0", 4) + NumberBytes(false, 8, 4) + MakeDirectory(false, main, 8, 8);
    EXPECT_EQ(TagsOf(ItemsOf(block)), (std::vector<std::uint32_t>{0x0001, 0x00FE, 0x0103}));
}

TEST(ExifReading, PlaceOfAThumbnailIsOneNumber) {
    const ExifSpec spec{.main = {{0x0112, 3, 1, NumberBytes(false, 6, 2)}}, .thumbnailData = "thumbnail"};
    std::string block = MakeExif(spec);
    EXPECT_NE(ItemsOf(block).Find(0x501B), nullptr);
    const std::size_t entry = block.find(std::string("\1\2\4\0\1\0\0\0", 8)); // the tag, the type and the count
    ASSERT_NE(entry, std::string::npos);
    block[entry + 4] = 2;
    EXPECT_EQ(ItemsOf(block).Find(0x501B), nullptr);
}

TEST(ExifReading, HugeCountsArePassedOver) {
    for (const unsigned type : {1u, 2u, 3u, 4u, 5u, 7u, 9u, 10u}) {
        for (const unsigned count : {0xFFFFFFFFu, 0x80000000u, 0x20000001u, 1000u}) {
            const std::string block = MakeExif({.main = {{0x0200, type, count, "0123456789"}}});
            EXPECT_TRUE(ItemsOf(block).Items().empty()) << type << ' ' << count;
        }
    }
}

TEST(ExifReading, ValuesBeyondTheLimitInSumArePassedOver) {
    // All of them share the same bytes, so the file is much smaller than what it claims.
    std::vector<ExifField> fields;
    for (unsigned tag = 0xC000; tag < 0xC010; ++tag) {
        fields.push_back({tag, 7, 4 << 20, NumberBytes(false, 1000, 4)}); // the value is taken for a position
    }
    std::string block = MakeExif({.main = fields});
    block.resize(5 << 20);
    EXPECT_EQ(ItemsOf(block).Items().size(), MaximumMetadataBytes / (4 << 20));
}

TEST(ExifReading, EntriesBeyondTheLimitArePassedOver) {
    std::vector<ExifField> fields;
    for (unsigned tag = 0; tag < 2 * MaximumMetadataEntries; ++tag) {
        fields.push_back({tag, 3, 1, "ab"});
    }
    EXPECT_EQ(ItemsOf(MakeExif({.main = fields})).Items().size(), MaximumMetadataEntries);
}

} // namespace
