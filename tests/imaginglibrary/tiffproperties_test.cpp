// The property items of TIFF files.
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"
#include "tests/support/tiffmaker.h"

namespace {

using namespace tests;

std::string GreyTiff(const TiffSpec& spec = {.width = 7, .height = 5}) {
    return MakeTiff(spec, [](auto x, auto y, auto) { return x * 9 + y; });
}

// A file of one white pixel with these entries besides those that make it one.
std::string PixelTiff(bool isBig, const ExifSpec& more) {
    const auto number = [&](unsigned tag, unsigned value) {
        return ExifField{tag, 4, 1, tests::NumberBytes(isBig, value, 4)};
    };
    ExifSpec spec = more;
    spec.isBigEndian = isBig;
    constexpr unsigned PixelAt = 2; // any byte will do
    spec.main = {number(0x0100, 1), number(0x0101, 1), number(0x0106, 1), number(0x0111, PixelAt), number(0x0117, 1)};
    spec.main.insert(spec.main.end(), more.main.begin(), more.main.end());
    return MakeExif(spec);
}

TEST(TiffProperties, WholeDirectoryIsShownInTheOrderOfTheFile) {
    const auto properties = PropertiesIn(TiffCodec(), GreyTiff({.width = 7, .height = 5, .resolution = 100}));
    EXPECT_EQ(TagsOf(properties),
              (std::vector<std::uint32_t>{0x0100, 0x0101, 0x0102, 0x0103, 0x0106, 0x010A, 0x0111, 0x0112, 0x0115,
                                          0x0116, 0x0117, 0x011A, 0x011B, 0x011C, 0x0128, 0x0153}));
    EXPECT_EQ(*properties.Find(0x0100), ShortProperty(0x0100, 7));
    EXPECT_EQ(*properties.Find(0x011B), NumbersProperty<std::uint32_t>(0x011B, PropertyType::Rational, {200, 1}));
}

TEST(TiffProperties, SubdirectoriesFollowInEitherByteOrder) {
    for (const bool isBig : {false, true}) {
        const auto number = tests::NumberBytes(isBig, 0x1234, 2);
        const auto bytes = PixelTiff(isBig, {.main = {{0x0131, 2, 5, std::string("tool\0", 5)}},
                                             .exif = {{0x8827, 3, 1, number}},
                                             .gps = {{0x0001, 2, 2, std::string("N\0", 2)}}});
        const auto properties = PropertiesIn(TiffCodec(), bytes);
        EXPECT_EQ(TagsOf(properties),
                  (std::vector<std::uint32_t>{0x0100, 0x0101, 0x0106, 0x0111, 0x0117, 0x0131, 0x8827, 0x0001}));
        ExpectItems(properties,
                    {AsciiProperty(0x0131, "tool"), ShortProperty(0x8827, 0x1234), AsciiProperty(0x0001, "N")});
    }
}

TEST(TiffProperties, NextPictureIsNoThumbnail) {
    const auto bytes = PixelTiff(false, {.thumbnail = {{0x0103, 3, 1, "\6"}}, .thumbnailData = "\xFF\xD8"});
    EXPECT_EQ(PropertiesIn(TiffCodec(), bytes).Find(0x5023), nullptr);
}

TEST(TiffProperties, LongListsOfPlacesArePassedOver) {
    const auto bytes = GreyTiff({.width = 1, .height = 20000, .rowsPerStrip = 1});
    const auto properties = PropertiesIn(TiffCodec(), bytes);
    EXPECT_EQ(properties.Find(0x0111), nullptr);
    EXPECT_NE(properties.Find(0x0116), nullptr);
}

} // namespace
