// EXIF blocks that come with the items of a file: what stays where it was, and what is changed.
#include "imaginglibrary/codecs/metadata/exifeditor.h"
#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"
#include "tests/support/tiffmaker.h"

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

const std::string Note = "a maker's note that counts from the start of its block";
const std::string ThumbnailBytes = "\xFF\xD8 the thumbnail \xFF\xD9";

// A block with a maker's note, and with tags that no property item tells of.
ExifSpec NoteSpec(bool isBig) {
    const auto number = [=](std::uint64_t value) { return tests::NumberBytes(isBig, value, 4); };
    const auto fraction = [=](std::uint64_t above) { return tests::NumbersBytes(isBig, {above, 1}, 4); };
    return {
        .isBigEndian = isBig,
        .main = {{0x010F, 2, 6, "maker\0"s}, {0x0132, 2, 20, "2026:11:21 09:30:00\0"s}, {0xC000, 12, 1, "12345678"}},
        .exif = {{0x829A, 5, 1, fraction(3)},
                 {0x927C, 7, static_cast<unsigned>(Note.size()), Note},
                 {0xA002, 4, 1, number(640)},
                 {0xA003, 4, 1, number(480)}},
        .gps = {{0x0001, 2, 2, "N\0"s}},
        .thumbnail = {{0x0103, 3, 1, tests::NumberBytes(isBig, 6, 2)}, {0x010F, 2, 6, "maker\0"s}},
        .thumbnailData = ThumbnailBytes};
}

std::string JpegWithExif(const std::string& block) { return MakeJpeg({}).insert(2, ExifMarker(block)); }

PropertyList ItemsWith(const std::string& block) { return PropertiesIn(JpegCodec(), JpegWithExif(block)); }

// The block in a JPEG file that a codec has written.
std::string BlockIn(const std::string& jpeg) {
    const std::size_t at = jpeg.find("\xFF\xE1");
    if (at == std::string::npos) {
        return {};
    }
    const auto byteAt = [&](std::size_t place) { return std::size_t{static_cast<unsigned char>(jpeg[place])}; };
    return jpeg.substr(at + 10, (byteAt(at + 2) << 8 | byteAt(at + 3)) - 8);
}

std::string BlockOf(const PropertyList& properties) { return BlockIn(WrittenWith(JpegCodec(), properties)); }

PropertyList WithItem(PropertyList properties, Property item) {
    properties.Set(std::move(item));
    return properties;
}

std::size_t Differences(const std::string& a, const std::string& b) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        count += a[i] != b[i] ? 1u : 0u;
    }
    return count;
}

TEST(ExifEditing, UnchangedBlockGoesThroughByteForByte) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig)) + "what ends it";
        EXPECT_EQ(BlockOf(ItemsWith(block)), block);
        const std::string png = WrittenWith(PngCodec(), ItemsWith(block));
        EXPECT_EQ(ChunkData(png, "eXIf"), block);
        EXPECT_EQ(BlockOf(PropertiesIn(PngCodec(), png)), block);
        EXPECT_EQ(ChunkData(WrittenWith(PngCodec(), PropertiesIn(PngCodec(), png)), "eXIf"), block);
    }
}

TEST(ExifEditing, TiffBeginsWithTheBlockInItsByteOrder) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        const auto items = ItemsWith(block);
        const std::string tiff = WrittenWith(TiffCodec(), items);
        EXPECT_EQ(tiff.substr(0, 4), block.substr(0, 4));
        EXPECT_EQ(tiff.find(Note), block.find(Note));
        EXPECT_EQ(tiff.find(ThumbnailBytes), std::string::npos);
        const auto read = PropertiesIn(TiffCodec(), tiff);
        for (const std::uint32_t tag : {0x010Fu, 0x0132u, 0x829Au, 0x927Cu, 0x0001u}) {
            ASSERT_NE(read.Find(tag), nullptr);
            EXPECT_EQ(*read.Find(tag), *items.Find(tag)) << tag;
        }
        EXPECT_NE(tiff.find((isBig ? "\xC0\0\0\x0C"s : "\0\xC0\x0C\0"s)), std::string::npos);
        EXPECT_EQ(ColorsOf(TiffCodec(), tiff), ColorsOf(*MakePicture(PixelFormat::Rgb24, 5, 3)));
    }
}

TEST(ExifEditing, EveryPixelFormatStaysWholeBehindABlock) {
    const auto items = ItemsWith(MakeExif(NoteSpec(true)));
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                     PixelFormat::Rgb24, PixelFormat::Argb32}) {
        EXPECT_EQ(ColorsOf(TiffCodec(), WrittenWith(TiffCodec(), items, format)),
                  ColorsOf(TiffCodec(), WrittenWith(TiffCodec(), {}, format)));
    }
}

TEST(ExifEditing, ValueOfTheSameLengthTakesThePlaceOfTheOld) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        const auto date = AsciiProperty(0x0132, "2001:02:03 04:05:06");
        const std::string changed = BlockOf(WithItem(ItemsWith(block), date));
        EXPECT_EQ(changed.size(), block.size());
        EXPECT_EQ(changed.find("2001:02:03 04:05:06"), block.find("2026:11:21 09:30:00"));
        EXPECT_LE(Differences(block, changed), 19u);
    }
}

TEST(ExifEditing, ShorterValueLeavesNothingOfTheOld) {
    const std::string block = MakeExif(NoteSpec(false));
    const auto date = AsciiProperty(0x0132, "2001:02");
    const std::string changed = BlockOf(WithItem(ItemsWith(block), date));
    EXPECT_EQ(changed.size(), block.size());
    EXPECT_EQ(changed.find("2001:02\0\0\0\0\0\0\0\0\0\0\0\0\0"s), block.find("2026:11:21 09:30:00"));
    ExpectItems(ItemsWith(changed), {date});
}

TEST(ExifEditing, LongerValueGoesToTheEnd) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        const auto maker = AsciiProperty(0x010F, "a maker with a longer name");
        const std::string changed = BlockOf(WithItem(ItemsWith(block), maker));
        EXPECT_EQ(changed.substr(changed.size() - 27), "a maker with a longer name\0"s);
        EXPECT_LE(Differences(block, changed), 8u); // its length and its place
        ExpectItems(ItemsWith(changed), {maker});
    }
}

TEST(ExifEditing, NewItemsGoToTheirDirectoriesAndTheNoteStays) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        auto items = ItemsWith(block);
        const std::vector<Property> added = {
            AsciiProperty(0x010E, "a title"),
            ShortProperty(0x8827, 100),
            AsciiProperty(0x0003, "E"),
            AsciiProperty(0x5041, "R98"),
            ShortProperty(0x0112, 6),
            AsciiProperty(0xA434, "a lens"),
            BytesProperty(0x9C9B, PropertyType::Byte, "x"),
        };
        for (const Property& item : added) {
            items.Set(item);
        }
        const std::string changed = BlockOf(items);
        EXPECT_EQ(changed.find(Note), block.find(Note));
        const auto read = ItemsWith(changed);
        ExpectItems(read, added);
        ExpectItems(read, {*items.Find(0x010F), *items.Find(0x927C), *items.Find(0x0001), *items.Find(0x501B)});
        EXPECT_EQ(read.Items().size(), items.Items().size());
        EXPECT_EQ(TagsOf(read).front(), 0x010Eu); // in the order of tags
    }
}

TEST(ExifEditing, ItemsOfPngTextsAreNotAddedToItsBlock) {
    const std::string block = MakeExif({.main = {{0x010F, 2, 6, "maker\0"s}}});
    std::string png = MakePng({}, [](auto, auto, auto) { return 9u; });
    png.insert(FindChunk(png, "IDAT"), PngChunk("tEXt", "Author\0painter"s) + PngChunk("eXIf", block));
    const auto items = PropertiesIn(PngCodec(), png);
    EXPECT_EQ(ChunkData(WrittenWith(PngCodec(), items), "eXIf"), block);
    ExpectItems(ItemsWith(BlockOf(items)), {AsciiProperty(0x010F, "maker"), AsciiProperty(0x013B, "painter")});
}

TEST(ExifEditing, ThumbnailOfAnyKindStaysWithoutItems) {
    const ExifField compression = {0x0103, 3, 1, tests::NumberBytes(false, 1, 2)};
    ExifSpec spec = NoteSpec(false);
    spec.thumbnail = {compression, {0x0111, 4, 1, tests::NumberBytes(false, 8, 4)}};
    const std::string block = MakeExif(spec);
    EXPECT_EQ(BlockOf(ItemsWith(block)), block);
}

TEST(ExifEditing, NewThumbnailHasTheBlockMadeAnew) {
    const auto items = WithItem(ItemsWith(MakeExif(NoteSpec(false))), BytesProperty(0x501B, PropertyType::Byte, "new"));
    const auto read = ItemsWith(BlockOf(items));
    ExpectItems(read, {*items.Find(0x501B), *items.Find(0x927C), *items.Find(0x010F)});
    EXPECT_EQ(read.Items().size(), items.Items().size());
}

TEST(ExifEditing, WhatOutgrowsAMarkerIsMadeAnewAndShortened) {
    const auto items = WithItem(ItemsWith(MakeExif(NoteSpec(false))),
                                BytesProperty(0xC100, PropertyType::Undefined, std::string(65480, 'x')));
    const auto read = ItemsWith(BlockOf(items));
    ExpectItems(read, {*items.Find(0x010F), *items.Find(0x927C)});
    EXPECT_EQ(read.Find(0x501B), nullptr);
}

TEST(ExifEditing, FittedItemsTellTheSizeAndNoThumbnail) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        auto items = WithItem(ItemsWith(block), ShortProperty(0x0100, 640));
        items.Set(ShortProperty(0x1002, 480));
        FitToPicture(items, 70000, 99);
        ExpectItems(items, {LongProperty(0xA002, 70000), LongProperty(0xA003, 99), LongProperty(0x0100, 70000),
                            ShortProperty(0x1002, 99)});
        EXPECT_EQ(items.Find(0x0101), nullptr);
        EXPECT_EQ(items.Find(0x501B), nullptr);
        EXPECT_EQ(items.Find(0x5023), nullptr);
        const std::string changed = BlockOf(items);
        EXPECT_EQ(changed.find("thumbnail"), std::string::npos);
        EXPECT_EQ(changed.find(Note), block.find(Note));
        ExpectItems(ItemsWith(changed), {LongProperty(0xA002, 70000), LongProperty(0xA003, 99)});
        EXPECT_EQ(ItemsWith(changed).Find(0x5023), nullptr);
    }
}

TEST(ExifEditing, ShortSidesStayShortAsLongAsTheyCan) {
    PropertyList items = ListOf({ShortProperty(0x0100, 640), ShortProperty(0x0101, 480), LongProperty(0xA002, 1)});
    FitToPicture(items, 65535, 65536);
    EXPECT_EQ(items.Items(), (std::vector<Property>{ShortProperty(0x0100, 65535), LongProperty(0x0101, 65536),
                                                    LongProperty(0xA002, 65535)}));
}

TEST(ExifEditing, ThumbnailAtTheEndIsCutOff) {
    const std::string block = MakeExif(NoteSpec(false));
    auto items = ItemsWith(block);
    FitToPicture(items, 640, 480);
    EXPECT_EQ(BlockOf(items).size(), block.size() - ThumbnailBytes.size());
}

TEST(ExifEditing, NoteOfATiffNearItsStartKeepsItsPlace) {
    for (const bool isBig : {false, true}) {
        const std::string block = MakeExif(NoteSpec(isBig));
        const std::string tiff = WrittenWith(TiffCodec(), ItemsWith(block));
        const auto items = PropertiesIn(TiffCodec(), tiff);
        ASSERT_NE(items.SourceExif(), nullptr);
        for (const Codec* codec : {&JpegCodec(), &PngCodec()}) {
            const std::string again = WrittenWith(*codec, items);
            const std::size_t start = again.find(isBig ? "MM\0*"s : "II*\0"s);
            EXPECT_EQ(again.find(Note) - start, block.find(Note));
            ExpectItems(PropertiesIn(*codec, again), {*items.Find(0x010F), *items.Find(0x829A), *items.Find(0x0001)});
        }
        EXPECT_EQ(WrittenWith(TiffCodec(), items).find(Note), block.find(Note));
    }
}

TEST(ExifEditing, NoteFarFromTheStartOfATiffMoves) {
    const std::vector<Property> items = {AsciiProperty(0x010F, "maker"),
                                         BytesProperty(0x927C, PropertyType::Undefined, Note)};
    for (const std::uint32_t at : {7u, 65537u}) {
        ExifBlock block;
        block.Add(items[1]);
        EXPECT_TRUE(block.MakeBlockAround(at).empty());
    }
    for (const std::uint32_t at : {8u, 9u, 100u, 1000u, 65536u}) { // before, among and behind the directories
        ExifBlock block;
        block.Add(items[0]);
        block.Add(items[1]);
        const auto bytes = block.MakeBlockAround(at);
        const std::string text(bytes.begin(), bytes.end());
        EXPECT_EQ(text.substr(at, Note.size()), Note);
        PropertyList read;
        ReadExif(bytes, ExifThumbnail::Keep, read);
        EXPECT_EQ(read.Items(), items);
    }
}

TEST(ExifEditing, BrokenBlockIsMadeAnew) {
    const std::string block = MakeExif({.main = {{0x010F, 2, 6, "maker\0"s}, {0x0112, 3, 1, "\6\0"s}}});
    for (const std::string& broken : {block.substr(0, 8 + 2 + 24), block.substr(0, 8) + "\xFF" + block.substr(9)}) {
        const auto items = ItemsWith(broken);
        ASSERT_NE(items.Find(0x0112), nullptr);
        const std::string written = BlockOf(items);
        EXPECT_NE(written.substr(0, broken.size()), broken);
        ExpectItems(ItemsWith(written), {ShortProperty(0x0112, 6)});
    }
}

TEST(ExifEditing, SpoiledBytesNeverCrash) {
    for (const bool isBig : {false, true}) {
        const std::string whole = MakeExif(NoteSpec(isBig));
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x08, 0x80, 0xFF}) {
                std::string spoiled = whole;
                spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
                PropertyList items;
                const std::vector<std::uint8_t> bytes(spoiled.begin(), spoiled.end());
                ReadExif(bytes, ExifThumbnail::Keep, items);
                items.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(bytes));
                items.Set(AsciiProperty(0x010F, "a longer maker"));
                items.Set(AsciiProperty(0x0132, "short"));
                items.Set(ShortProperty(0x8827, 100));
                items.Set(AsciiProperty(0x5041, "R98"));
                FitToPicture(items, 7, 5);
                for (const Codec* codec : {&JpegCodec(), &TiffCodec(), &PngCodec()}) {
                    EXPECT_TRUE(OpenBytes(*codec, WrittenWith(*codec, items)).Ok());
                }
            }
        }
    }
}

} // namespace
