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
    // Four bytes for each row, up to 64 kilobytes.
    const auto itemsOf = [](unsigned rows) {
        return PropertiesIn(TiffCodec(), GreyTiff({.width = 1, .height = rows, .rowsPerStrip = 1}));
    };
    EXPECT_EQ(itemsOf(16385).Find(0x0111), nullptr);
    EXPECT_NE(itemsOf(16385).Find(0x0116), nullptr);
    EXPECT_NE(itemsOf(16384).Find(0x0111), nullptr);
}

const std::vector<Property> TiffCameraItems = {
    AsciiProperty(0x010F, "maker"),
    BytesProperty(0x4746, PropertyType::Byte, "odd"),
    NumbersProperty<std::uint32_t>(0x829A, PropertyType::Rational, {1, 250}),
    ShortProperty(0x8827, 100),
    AsciiProperty(0x9286, "remark"),
    BytesProperty(0x927C, PropertyType::Undefined, "a maker's note"),
    NumbersProperty<std::int32_t>(0x9204, PropertyType::SRational, {-1, 3}),
    NumbersProperty<std::int32_t>(0x9999, PropertyType::SLong, {-1}),
    LongProperty(0xA002, 70000),
    AsciiProperty(0x0001, "N"),
    AsciiProperty(0x5041, "R98"),
};

TEST(TiffProperties, WhatIsWrittenComesBack) {
    ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf(TiffCameraItems))), TiffCameraItems);
}

TEST(TiffProperties, PixelsStayUntouched) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed8, PixelFormat::Argb32}) {
        const std::string plain = WrittenWith(TiffCodec(), {}, format);
        const std::string bytes = WrittenWith(TiffCodec(), ListOf(TiffCameraItems), format);
        EXPECT_EQ(bytes.substr(8, plain.size() - 8), plain.substr(8));
        EXPECT_EQ(ColorsOf(*Opened(TiffCodec(), bytes)), ColorsOf(*MakePicture(format, 5, 3)));
    }
}

TEST(TiffProperties, NothingToWriteLeavesTheFileAsItWas) {
    const std::string plain = WrittenWith(TiffCodec(), {});
    for (const Property& item : {ShortProperty(0x5090, 1), ShortProperty(0x0103, 1), ShortProperty(0x0100, 7),
                                 BytesProperty(0x501B, PropertyType::Byte, "thumbnail")}) {
        EXPECT_EQ(WrittenWith(TiffCodec(), ListOf({item})), plain) << std::hex << item.tag;
    }
}

TEST(TiffProperties, OrientationAndResolutionTakeTheirPlace) {
    const std::vector<Property> items = {
        ShortProperty(0x0112, 6), NumbersProperty<std::uint32_t>(0x011A, PropertyType::Rational, {150, 1}),
        NumbersProperty<std::uint32_t>(0x011B, PropertyType::Rational, {75, 1}), ShortProperty(0x0128, 3)};
    const std::string bytes = WrittenWith(TiffCodec(), ListOf(items));
    ExpectItems(PropertiesIn(TiffCodec(), bytes), items);
    EXPECT_DOUBLE_EQ(Opened(TiffCodec(), bytes)->Info().resolution.horizontal, 150 * 2.54);
}

TEST(TiffProperties, ResolutionOfAnotherTypeDoesNotTakeItsPlace) {
    const std::string bytes =
        WrittenWith(TiffCodec(), ListOf({AsciiProperty(0x011A, "many"), ShortProperty(0x011B, 5)}));
    EXPECT_EQ(bytes, WrittenWith(TiffCodec(), {}));
}

// Whatever it says: the file was described by its writer, and items are not to make it another picture.
TEST(TiffProperties, NoItemSpoilsThePicture) {
    const auto colors = ColorsOf(*MakePicture(PixelFormat::Rgb24, 5, 3));
    for (std::uint32_t tag = 0x00FE; tag < 0x0300; ++tag) {
        for (const Property& item :
             {ShortProperty(tag, 3), NumbersProperty<std::uint32_t>(tag, PropertyType::Long, {1, 2, 3, 4}),
              NumbersProperty<std::uint32_t>(tag, PropertyType::Rational, {7, 0})}) {
            const auto opened = OpenBytes(TiffCodec(), WrittenWith(TiffCodec(), ListOf({item})));
            ASSERT_TRUE(opened.Ok()) << std::hex << tag;
            EXPECT_EQ(ColorsOf(**opened), colors) << std::hex << tag;
        }
    }
}

std::string libtiffComplaints;

void KeepComplaint(const char* /*module*/, const char* format, va_list arguments) {
    std::array<char, 500> text{};
    vsnprintf(text.data(), text.size(), format, arguments);
    libtiffComplaints += text.data() + std::string("\n");
}

// What libtiff itself cannot make out in a file, and others refuse it for.
std::string ComplaintsAbout(const std::string& bytes, const TemporaryFolder& folder) {
    const auto path = folder / "judged.tif";
    WriteBytes(path, bytes);
    libtiffComplaints.clear();
    const auto errors = TIFFSetErrorHandler(KeepComplaint);
    const auto warnings = TIFFSetWarningHandler(nullptr); // unknown tags and texts without an end are none of it
    if (TIFF* tiff = TIFFOpen(path.string().c_str(), "r")) {
        TIFFClose(tiff);
    }
    TIFFSetErrorHandler(errors);
    TIFFSetWarningHandler(warnings);
    return libtiffComplaints;
}

TEST(TiffProperties, StrictReadersHaveNothingAgainstAnyValue) {
    const TemporaryFolder folder;
    ASSERT_NE(ComplaintsAbout("no TIFF file", folder), "");
    for (std::uint32_t tag = 0x00FE; tag < 0x0216; ++tag) {
        for (const Property& item : {ShortProperty(tag, 0), ShortProperty(tag, 9),
                                     NumbersProperty<std::uint32_t>(tag, PropertyType::Rational, {7, 0})}) {
            EXPECT_EQ(ComplaintsAbout(WrittenWith(TiffCodec(), ListOf({item})), folder), "") << std::hex << tag;
        }
    }
}

TEST(TiffProperties, ValuesThatMeanNothingDoNotTakeTheirPlace) {
    const std::string plain = WrittenWith(TiffCodec(), {});
    for (const unsigned value : {0u, 9u, 65535u}) {
        EXPECT_EQ(WrittenWith(TiffCodec(), ListOf({ShortProperty(0x0112, static_cast<std::uint16_t>(value))})), plain);
    }
    const auto horizontal = NumbersProperty<std::uint32_t>(0x011A, PropertyType::Rational, {300, 1});
    const auto vertical = NumbersProperty<std::uint32_t>(0x011B, PropertyType::Rational, {300, 1});
    for (const std::uint16_t unit : {std::uint16_t{0}, std::uint16_t{4}}) {
        const auto properties = PropertiesIn(
            TiffCodec(), WrittenWith(TiffCodec(), ListOf({horizontal, vertical, ShortProperty(0x0128, unit)})));
        ExpectItems(properties, {horizontal, vertical, ShortProperty(0x0128, 2)});
    }
    for (const std::uint16_t orientation : {std::uint16_t{1}, std::uint16_t{8}}) {
        const auto item = ShortProperty(0x0112, orientation);
        ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({item}))), {item});
    }
}

// Dots per centimetre that are dots per inch would be another size.
TEST(TiffProperties, UnitDoesNotTakeItsPlaceWithoutBothResolutions) {
    const auto unit = ShortProperty(0x0128, 3);
    for (const auto& [numerator, denominator] : {std::pair{0u, 1u}, {1u, 0u}}) {
        for (const std::uint32_t tag : {0x011Au, 0x011Bu}) {
            const auto none = NumbersProperty<std::uint32_t>(tag, PropertyType::Rational, {numerator, denominator});
            const auto other = NumbersProperty<std::uint32_t>(tag ^ 1, PropertyType::Rational, {40, 1});
            const auto properties = PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), ListOf({none, other, unit})));
            ExpectItems(properties, {ShortProperty(0x0128, 2)});
            EXPECT_NE(*properties.Find(tag), none);
        }
    }
}

TEST(TiffProperties, FullDiskIsTheWritersStatus) {
    const auto items = ListOf({BytesProperty(0xC000, PropertyType::Undefined, std::string(200000, 'x'))});
    MemoryOutput file(100000);
    EXPECT_EQ(TiffCodec().write(*MakePicture(PixelFormat::Rgb24, 5, 3), items, {}, file), MemoryOutput::DiskFull);
}

} // namespace
