// Colour profiles, which go along with their pictures.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

constexpr std::uint32_t ProfileTag = 0x8773;

// A header and a table of no tags, filled up with zeros.
std::string Profile(const std::string& colorSpace = "RGB ", std::size_t size = 132) {
    std::string profile(size, '\0');
    profile.replace(0, 4, tests::NumberBytes(true, size, 4));
    profile.replace(8, 1, "\2");
    profile.replace(12, 4, "mntr");
    profile.replace(16, 4, colorSpace);
    profile.replace(20, 4, "XYZ ");
    profile.replace(36, 4, "acsp");
    profile.replace(68, 12, "\0\0\xF6\xD6\0\1\0\0\0\0\xD3\x2D"s);
    return profile;
}

Property ProfileItem(const std::string& profile, PropertyType type = PropertyType::Byte) {
    return BytesProperty(ProfileTag, type, profile);
}

TEST(ColorProfile, ComesBackFromEveryFormatThatCarriesIt) {
    for (const std::size_t size : {132u, 150000u}) {
        const std::string profile = Profile("RGB ", size);
        for (const PropertyType type : {PropertyType::Byte, PropertyType::Undefined}) {
            const auto properties = ListOf({ProfileItem(profile, type)});
            ExpectItems(PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), properties)), {ProfileItem(profile)});
            ExpectItems(PropertiesIn(PngCodec(), WrittenWith(PngCodec(), properties)), {ProfileItem(profile)});
            ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), properties)),
                        {ProfileItem(profile, PropertyType::Undefined)});
        }
    }
}

TEST(ColorProfile, ForOtherColorsIsLeftOut) {
    for (const Property& item :
         {ProfileItem(Profile("CMYK")), ProfileItem(Profile("GRAY")), ProfileItem(Profile().substr(0, 100)),
          ProfileItem(Profile("RGB ", MaximumMetadataBytes + 4)), AsciiProperty(ProfileTag, Profile())}) {
        for (const Codec* codec : {&JpegCodec(), &PngCodec(), &TiffCodec()}) {
            EXPECT_EQ(WrittenWith(*codec, ListOf({item})), WrittenWith(*codec, {}));
        }
    }
}

TEST(ColorProfile, HasAtLeastAWholeHeader) {
    const auto shortest = ListOf({ProfileItem(Profile("RGB ", 128))});
    ExpectItems(PropertiesIn(TiffCodec(), WrittenWith(TiffCodec(), shortest)),
                {ProfileItem(Profile("RGB ", 128), PropertyType::Undefined)});
    const auto tooShort = ListOf({ProfileItem(Profile("RGB ", 128).substr(0, 127))});
    EXPECT_EQ(WrittenWith(TiffCodec(), tooShort), WrittenWith(TiffCodec(), {}));
}

TEST(ColorProfile, ThatPngWouldRefuseIsLeftOutThere) {
    std::string broken = Profile();
    broken[36] = 'x';
    EXPECT_EQ(WrittenWith(PngCodec(), ListOf({ProfileItem(broken)})), WrittenWith(PngCodec(), {}));
}

TEST(ColorProfile, TakesThePlaceOfTheScreensColorsInPng) {
    const std::string bytes = WrittenWith(PngCodec(), ListOf({ProfileItem(Profile())}));
    EXPECT_NE(ChunkData(bytes, "iCCP"), std::nullopt);
    EXPECT_EQ(ChunkData(bytes, "sRGB"), std::nullopt);
    EXPECT_EQ(ChunkData(bytes, "gAMA"), std::nullopt);
    EXPECT_EQ(ChunkData(bytes, "eXIf"), std::nullopt);
}

TEST(ColorProfile, ThatIsTooLongForJpegIsLeftOutThere) {
    const auto properties = ListOf({ProfileItem(Profile("RGB ", MaximumMetadataBytes))});
    EXPECT_EQ(WrittenWith(JpegCodec(), properties), WrittenWith(JpegCodec(), {}));
}

TEST(ColorProfile, IsLeftOutOfGreyTiffs) {
    MemoryOutput file;
    const PictureInfo info{.width = 3, .height = 3, .format = PixelFormat::Indexed8, .palette = GreyPalette(256)};
    ASSERT_EQ(TiffCodec().write(**Bitmap::Create(info), ListOf({ProfileItem(Profile())}), {}, file), Status::Ok);
    ASSERT_EQ(file.Commit(), Status::Ok);
    EXPECT_EQ(PropertiesIn(TiffCodec(), file.Bytes()).Find(ProfileTag), nullptr);
}

TEST(ColorProfile, OfGreyGoesWhereGreyIsWritten) {
    MemoryOutput file;
    const PictureInfo info{.width = 3, .height = 3, .format = PixelFormat::Indexed8, .palette = GreyPalette(256)};
    const auto profile = Profile("GRAY");
    ASSERT_EQ(TiffCodec().write(**Bitmap::Create(info), ListOf({ProfileItem(profile)}), {}, file), Status::Ok);
    ASSERT_EQ(file.Commit(), Status::Ok);
    ExpectItems(PropertiesIn(TiffCodec(), file.Bytes()), {ProfileItem(profile, PropertyType::Undefined)});
}

TEST(ColorProfile, ThatLacksAPartInJpegIsPassedOver) {
    std::string bytes = WrittenWith(JpegCodec(), ListOf({ProfileItem(Profile("RGB ", 150000))}));
    const std::size_t second = FindMarker(bytes, 0xE2, FindMarker(bytes, 0xE2) + 2);
    bytes.erase(second, 2 + 65535);
    const auto picture = OpenBytes(JpegCodec(), bytes);
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Properties().Find(ProfileTag), nullptr);
    EXPECT_EQ(ReadAllRows(**picture), Status::Ok);
}

TEST(ColorProfile, ThatIsBrokenInPngIsPassedOver) {
    std::string bytes = WrittenWith(PngCodec(), {});
    bytes.insert(FindChunk(bytes, "IDAT"), PngChunk("iCCP", "name\0\0no data"s));
    EXPECT_EQ(PropertiesIn(PngCodec(), bytes).Find(ProfileTag), nullptr);
}

} // namespace
