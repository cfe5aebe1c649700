// Bitmaps from nothing and from parts of others, turning them, and their properties, through the flat interface.
#include "tests/support/flatdrawing.h"

#include "tests/support/codecs.h"

#include <cstring>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;
using FlatBitmaps = FlatTest;
using FlatProperties = FlatTest;

std::uint32_t WidthOf(GpImage* image) {
    std::uint32_t width = 0;
    EXPECT_EQ(GdipGetImageWidth(image, &width), Status::Ok);
    return width;
}

PixelFormat FormatOf(GpImage* image) {
    PixelFormat format = PixelFormat::Undefined;
    EXPECT_EQ(GdipGetImagePixelFormat(image, &format), Status::Ok);
    return format;
}

TEST_F(FlatBitmaps, FreshPixelsAreZero) {
    for (const Color color : PixelsOf(NewBitmap(7, 5))) {
        EXPECT_EQ(color, 0u);
    }
    for (const Color color : PixelsOf(NewBitmap(7, 5, PixelFormat::Rgb24))) {
        EXPECT_EQ(color, 0xFF000000u);
    }
}

TEST_F(FlatBitmaps, SizesAndFormatsAreChecked) {
    GpImage* bitmap = nullptr;
    for (const auto& [width, height] :
         {std::pair{0, 5}, {5, 0}, {-1, 5}, {5, -1}, {65536, 1}, {INT32_MAX, INT32_MAX}}) {
        EXPECT_NE(CreateBitmap(width, height, PixelFormat::Rgb24, &bitmap), Status::Ok);
    }
    EXPECT_EQ(CreateBitmap(0, 5, PixelFormat::Rgb24, &bitmap), Status::InvalidParameter);
    EXPECT_EQ(CreateBitmap(5, 5, PixelFormat::Undefined, &bitmap), Status::InvalidParameter);
    EXPECT_EQ(CreateBitmap(5, 5, static_cast<PixelFormat>(0x00010000), &bitmap), Status::InvalidParameter);
    EXPECT_EQ(CreateBitmap(5, 5, PixelFormat::Rgb24, nullptr), Status::InvalidParameter);
    EXPECT_EQ(CreateBitmap(65535, 65535, PixelFormat::Argb32, &bitmap), Status::OutOfMemory);
    EXPECT_EQ(CreateBitmap(30000, 30000, PixelFormat::Argb32, &bitmap), Status::OutOfMemory);
    EXPECT_EQ(bitmap, nullptr);
}

// A gigabyte, and half of one in a program of 32 bits.
TEST(Bitmaps, HoldWhatIsWithinSideAndMemory) {
    const std::uint32_t rows = sizeof(void*) == 4 ? 4096 : 8192;
    EXPECT_TRUE(Bitmap::CanHold({.width = 32768, .height = rows, .format = PixelFormat::Argb32}));
    EXPECT_EQ(Bitmap::Create({.width = 32768, .height = rows + 1, .format = PixelFormat::Argb32}).GetStatus(),
              Status::OutOfMemory);
    EXPECT_TRUE(Bitmap::CanHold({.width = 65535, .height = 1, .format = PixelFormat::Rgb24}));
    EXPECT_EQ(Bitmap::Create({.width = 65536, .height = 1, .format = PixelFormat::Rgb24}).GetStatus(),
              Status::InvalidParameter);
    EXPECT_EQ(Bitmap::Create({.width = 1, .height = 0, .format = PixelFormat::Rgb24}).GetStatus(),
              Status::InvalidParameter);
    EXPECT_EQ(Bitmap::Create({.width = 1, .height = 1}).GetStatus(), Status::InvalidParameter);
}

TEST_F(FlatBitmaps, FreshIndexedOnesHaveTheDefaultPalettes) {
    const auto paletteOf = [&](PixelFormat format) {
        const auto path = folder_ / "palette.bmp";
        EXPECT_EQ(GdipSaveImageToFile(NewBitmap(3, 3, format), path.u16string().c_str(), &BmpCodec().classId),
                  Status::Ok);
        return (*OpenPicture(path))->Info().palette;
    };
    EXPECT_EQ(paletteOf(PixelFormat::Indexed1), (Palette{0xFF000000, 0xFFFFFFFF}));
    const Palette sixteen = paletteOf(PixelFormat::Indexed4);
    ASSERT_EQ(sixteen.size(), 16u);
    EXPECT_EQ(sixteen[1], 0xFF800000u);
    EXPECT_EQ(sixteen[8], 0xFFC0C0C0u);
    EXPECT_EQ(sixteen[15], 0xFFFFFFFFu);
    const Palette full = paletteOf(PixelFormat::Indexed8);
    ASSERT_EQ(full.size(), 256u);
    EXPECT_EQ(full[41], 0xFF000033u); // blue rises fastest in the cube
    EXPECT_EQ(full[46], 0xFF003300u);
    EXPECT_EQ(full[255], 0xFFFFFFFFu);
}

TEST_F(FlatBitmaps, PartOfAPictureHoldsItsPixels) {
    const auto picture = MakePicture(PixelFormat::Indexed4, 30, 20);
    GpImage* part = nullptr;
    ASSERT_EQ(CloneArea(5, 6, 11, 7, PixelFormat::Indexed4, ImageOf(*picture), &part), Status::Ok);
    EXPECT_EQ(FormatOf(part), PixelFormat::Indexed4);
    const auto all = ColorsOf(*picture);
    const auto pixels = PixelsOf(part);
    ASSERT_EQ(pixels.size(), 77u);
    EXPECT_EQ(pixels[0], all[6 * 30 + 5]);
    EXPECT_EQ(pixels[76], all[12 * 30 + 15]);
}

TEST_F(FlatBitmaps, PartMayBeOfAnotherFormat) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Indexed8, 30, 20));
    GpImage* part = nullptr;
    ASSERT_EQ(CloneArea(0, 0, 30, 20, PixelFormat::Rgb24, image, &part), Status::Ok);
    EXPECT_EQ(FormatOf(part), PixelFormat::Rgb24);
    EXPECT_EQ(PixelsOf(part), PixelsOf(image));
    ASSERT_EQ(CloneArea(0, 0, 30, 20, PixelFormat::Undefined, image, &part), Status::Ok);
    EXPECT_EQ(FormatOf(part), PixelFormat::Indexed8);
    EXPECT_EQ(CloneArea(0, 0, 30, 20, PixelFormat::Indexed1, image, &part), Status::OutOfMemory);
}

TEST_F(FlatBitmaps, PartOverAnyEdgeIsRefused) {
    GpImage* const image = NewBitmap(10, 8, PixelFormat::Rgb24);
    GpImage* part = nullptr;
    const auto clone = [&](std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return CloneArea(x, y, width, height, PixelFormat::Rgb24, image, &part);
    };
    EXPECT_EQ(clone(0, 0, 10, 8), Status::Ok);
    part = nullptr;
    EXPECT_EQ(clone(1, 0, 10, 8), Status::OutOfMemory);
    EXPECT_EQ(clone(0, 1, 10, 8), Status::OutOfMemory);
    EXPECT_EQ(clone(-1, 0, 5, 5), Status::OutOfMemory);
    EXPECT_EQ(clone(0, -1, 5, 5), Status::OutOfMemory);
    EXPECT_EQ(clone(10, 0, 1, 1), Status::OutOfMemory);
    EXPECT_EQ(clone(INT32_MAX, 0, INT32_MAX, 1), Status::OutOfMemory);
    EXPECT_EQ(clone(0, 0, 0, 5), Status::InvalidParameter);
    EXPECT_EQ(clone(0, 0, 5, -5), Status::InvalidParameter);
    EXPECT_EQ(part, nullptr);
    EXPECT_EQ(CloneArea(0, 0, 1, 1, PixelFormat::Rgb24, nullptr, &part), Status::InvalidParameter);
}

TEST_F(FlatBitmaps, PartKeepsResolutionAndProperties) {
    GpImage* const image = ImageOf(
        *Bitmap::Create({.width = 9, .height = 9, .format = PixelFormat::Rgb24, .resolution = {300, 200}}).operator*());
    SetProperty(image, AsciiProperty(0x010E, "a description"));
    GpImage* part = nullptr;
    ASSERT_EQ(CloneArea(1, 1, 5, 5, PixelFormat::Rgb24, image, &part), Status::Ok);
    std::uint32_t bytes = 0;
    EXPECT_EQ(CallFlat("GdipGetPropertyItemSize", part, std::uint32_t{0x010E}, &bytes), Status::Ok);
    const auto path = folder_ / "part.bmp";
    ASSERT_EQ(GdipSaveImageToFile(part, path.u16string().c_str(), &BmpCodec().classId), Status::Ok);
    EXPECT_NEAR((*OpenPicture(path))->Info().resolution.horizontal, 300, 0.1);
    EXPECT_NEAR((*OpenPicture(path))->Info().resolution.vertical, 200, 0.1);
}

TEST_F(FlatBitmaps, TurningWorksInPlaceInEveryFormat) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Rgb24}) {
        GpImage* const image = ImageOf(*MakePicture(format, 20, 10));
        const auto before = PixelsOf(image);
        EXPECT_EQ(RotateFlip(image, 1), Status::Ok);
        EXPECT_EQ(WidthOf(image), 10u);
        EXPECT_EQ(FormatOf(image), format);
        EXPECT_EQ(PixelsOf(image)[9], before[0]);
        EXPECT_EQ(RotateFlip(image, 3), Status::Ok);
        EXPECT_EQ(PixelsOf(image), before);
    }
}

TEST_F(FlatBitmaps, CodeThatIsNoneLeavesThePictureAlone) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 20, 10));
    const auto before = PixelsOf(image);
    for (const std::int32_t code : {-1, 8, 9, 1000, INT32_MIN}) {
        EXPECT_EQ(RotateFlip(image, code), Status::InvalidParameter);
    }
    EXPECT_EQ(PixelsOf(image), before);
    EXPECT_EQ(RotateFlip(nullptr, 1), Status::InvalidParameter);
}

TEST_F(FlatBitmaps, TurningACloneLeavesTheOriginal) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 20, 10));
    GpImage* clone = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    EXPECT_EQ(RotateFlip(clone, 1), Status::Ok);
    EXPECT_EQ(WidthOf(image), 20u);
}

TEST_F(FlatProperties, MemoryBitmapHasNone) {
    std::uint32_t bytes = 7, count = 7;
    GpImage* const image = NewBitmap(2, 2);
    EXPECT_EQ(CallFlat("GdipGetPropertySize", image, &bytes, &count), Status::Ok);
    EXPECT_EQ(bytes, 0u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(CallFlat("GdipGetPropertyItemSize", image, std::uint32_t{306}, &bytes), Status::PropertyNotFound);
    EXPECT_EQ(CallFlat("GdipGetPropertyItem", image, std::uint32_t{306}, std::uint32_t{16},
                       reinterpret_cast<std::uint8_t*>(&bytes)),
              Status::PropertyNotFound);
}

TEST_F(FlatProperties, BlockHoldsRecordsThenValues) {
    GpImage* const image = NewBitmap(2, 2);
    ASSERT_EQ(SetProperty(image, AsciiProperty(306, "2026:11:21 09:30:00")), Status::Ok);
    ASSERT_EQ(SetProperty(image, ShortProperty(274, 6)), Status::Ok);
    std::uint32_t bytes = 0, count = 0;
    ASSERT_EQ(CallFlat("GdipGetPropertySize", image, &bytes, &count), Status::Ok);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(bytes, 2 * sizeof(PropertyItem) + 20 + 2);
    std::vector<std::uint8_t> block(bytes);
    ASSERT_EQ(CallFlat("GdipGetAllPropertyItems", image, bytes, count, block.data()), Status::Ok);
    PropertyItem items[2];
    std::memcpy(items, block.data(), sizeof items);
    EXPECT_EQ(items[0].id, 306u);
    EXPECT_EQ(items[0].length, 20u);
    EXPECT_EQ(items[0].type, 2);
    EXPECT_EQ(items[0].value, block.data() + sizeof items);
    EXPECT_STREQ(static_cast<const char*>(items[0].value), "2026:11:21 09:30:00");
    EXPECT_EQ(items[1].id, 274u);
    EXPECT_EQ(items[1].value, block.data() + sizeof items + 20);
    EXPECT_EQ(CallFlat("GdipGetAllPropertyItems", image, bytes + 1, count, block.data()), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("GdipGetAllPropertyItems", image, bytes, count - 1, block.data()), Status::InvalidParameter);
}

TEST_F(FlatProperties, OneItemComesWithItsValueBehind) {
    GpImage* const image = NewBitmap(2, 2);
    SetProperty(image, AsciiProperty(306, "now"));
    std::uint32_t bytes = 0;
    ASSERT_EQ(CallFlat("GdipGetPropertyItemSize", image, std::uint32_t{306}, &bytes), Status::Ok);
    EXPECT_EQ(bytes, sizeof(PropertyItem) + 4);
    std::vector<std::uint8_t> block(bytes);
    ASSERT_EQ(CallFlat("GdipGetPropertyItem", image, std::uint32_t{306}, bytes, block.data()), Status::Ok);
    PropertyItem item;
    std::memcpy(&item, block.data(), sizeof item);
    EXPECT_STREQ(static_cast<const char*>(item.value), "now");
    EXPECT_EQ(CallFlat("GdipGetPropertyItem", image, std::uint32_t{306}, bytes - 1, block.data()),
              Status::InvalidParameter);
}

TEST_F(FlatProperties, NewOnesGoToTheEndAndReplacedOnesKeepTheirPlace) {
    GpImage* const image = NewBitmap(2, 2);
    for (const std::uint32_t tag : {0x10Fu, 0x110u, 0u, 0xFFFFFFFFu, 0x110u}) {
        EXPECT_EQ(SetProperty(image, LongProperty(tag, tag)), Status::Ok);
    }
    std::uint32_t count = 0;
    ASSERT_EQ(CallFlat("GdipGetPropertyCount", image, &count), Status::Ok);
    ASSERT_EQ(count, 4u);
    std::vector<std::uint32_t> tags(count);
    ASSERT_EQ(CallFlat("GdipGetPropertyIdList", image, count, tags.data()), Status::Ok);
    EXPECT_EQ(tags, (std::vector<std::uint32_t>{0x10F, 0x110, 0, 0xFFFFFFFF}));
    EXPECT_EQ(CallFlat("GdipGetPropertyIdList", image, count + 1, tags.data()), Status::InvalidParameter);
}

TEST_F(FlatProperties, ClonesHaveTheirOwn) {
    GpImage* const image = NewBitmap(2, 2);
    SetProperty(image, LongProperty(1, 1));
    GpImage* clone = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    SetProperty(clone, LongProperty(2, 2));
    std::uint32_t count = 0;
    CallFlat("GdipGetPropertyCount", image, &count);
    EXPECT_EQ(count, 1u);
    CallFlat("GdipGetPropertyCount", clone, &count);
    EXPECT_EQ(count, 2u);
}

TEST_F(FlatProperties, IconsTakeNone) {
    const auto path = folder_ / "icon.ico";
    std::string icon("\0\0\1\0\1\0\1\1\0\0\1\0\x20\0\x30\0\0\0\x16\0\0\0", 22);
    icon += std::string("\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x20\0", 16) + std::string(24, '\0') + "\1\2\3\xFF" +
            std::string(4, '\0');
    WriteBytes(path, icon);
    EXPECT_EQ(SetProperty(Load(path), LongProperty(1, 1)), Status::PropertyNotSupported);
}

TEST_F(FlatProperties, BadArgumentsAreRefused) {
    GpImage* const image = NewBitmap(2, 2);
    const PropertyItem withoutValue{306, 5, 2, nullptr};
    EXPECT_EQ(CallFlat("GdipSetPropertyItem", image, &withoutValue), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("GdipSetPropertyItem", image, static_cast<const PropertyItem*>(nullptr)),
              Status::InvalidParameter);
    EXPECT_EQ(SetProperty(nullptr, LongProperty(1, 1)), Status::InvalidParameter);
    const PropertyItem empty{306, 0, 2, nullptr};
    EXPECT_EQ(CallFlat("GdipSetPropertyItem", image, &empty), Status::Ok);
}

} // namespace
