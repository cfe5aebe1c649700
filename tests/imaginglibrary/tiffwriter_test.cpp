// How pictures of every format are laid down in TIFF files, and that nothing of them is lost.
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

// What another reader finds in the file's tags.
struct Tags {
    int photometric = 0;
    int bits = 0;
    int samples = 0;
    int compression = 0;
    int predictor = 0;
    int extraSample = -1;
    std::uint32_t rowsPerStrip = 0;
    float horizontal = 0;
    float vertical = 0;
    int unit = 0;
    bool isBigEndian = false;
};

int ShortTag(TIFF* tiff, std::uint32_t tag) {
    std::uint16_t value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

Tags TagsOf(const PixelSource& picture) {
    const TemporaryFolder folder;
    const auto path = folder / "written.tif";
    EXPECT_EQ(WritePicture(TiffCodec(), picture, path), Status::Ok);
    TIFF* tiff = TIFFOpen(path.string().c_str(), "r");
    Tags tags{.photometric = ShortTag(tiff, TIFFTAG_PHOTOMETRIC),
              .bits = ShortTag(tiff, TIFFTAG_BITSPERSAMPLE),
              .samples = ShortTag(tiff, TIFFTAG_SAMPLESPERPIXEL),
              .compression = ShortTag(tiff, TIFFTAG_COMPRESSION),
              .unit = ShortTag(tiff, TIFFTAG_RESOLUTIONUNIT),
              .isBigEndian = TIFFIsBigEndian(tiff) != 0};
    if (tags.compression == COMPRESSION_LZW) {
        tags.predictor = ShortTag(tiff, TIFFTAG_PREDICTOR);
    }
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 1 && count == 1) {
        tags.extraSample = kinds[0];
    }
    TIFFGetField(tiff, TIFFTAG_ROWSPERSTRIP, &tags.rowsPerStrip);
    TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &tags.horizontal);
    TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &tags.vertical);
    TIFFClose(tiff);
    return tags;
}

std::shared_ptr<Bitmap> MakeIndexed(PixelFormat format, Palette palette, std::uint32_t width = 33) {
    const auto model = MakePicture(format, width, 7);
    PictureInfo info = model->Info();
    info.palette = std::move(palette);
    auto bitmap = *Bitmap::Create(info);
    for (std::uint32_t y = 0; y < info.height; ++y) {
        std::copy_n(model->Row(y), model->RowBytes(), bitmap->Row(y));
    }
    return bitmap;
}

constexpr PixelFormat TiffFormats[] = {
    PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8, PixelFormat::Rgb555,
    PixelFormat::Rgb565,   PixelFormat::Argb1555, PixelFormat::Rgb24,    PixelFormat::Rgb32,
    PixelFormat::Argb32,   PixelFormat::Pargb32,  PixelFormat::Rgb48,
};

constexpr struct {
    std::uint32_t width, height;
} TiffSizes[] = {{1, 1}, {7, 5}, {17, 3}, {65, 33}, {8, 8}, {1, 40}, {300, 1}, {500, 301}};

TEST(TiffWriter, EveryFormatComesBackExactly) {
    for (const PixelFormat format : TiffFormats) {
        for (const auto& size : TiffSizes) {
            const auto picture = MakePicture(format, size.width, size.height);
            const auto tiff = Rewritten(TiffCodec(), *picture);
            ASSERT_NE(tiff, nullptr);
            EXPECT_EQ(ColorsOf(*tiff), ColorsOf(*picture)) << std::hex << static_cast<std::uint32_t>(format) << std::dec
                                                           << " " << size.width << "x" << size.height;
        }
    }
}

TEST(TiffWriter, IndexedFormatsStayIndexed) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8}) {
        const auto picture = MakePicture(format, 7, 5);
        const auto tiff = Rewritten(TiffCodec(), *picture);
        EXPECT_EQ(tiff->Info().format, format);
        EXPECT_EQ(tiff->Info().palette, picture->Info().palette);
    }
}

TEST(TiffWriter, BlackAndWhiteIsFaxGroup4InEitherOrder) {
    const auto blackFirst = MakeIndexed(PixelFormat::Indexed1, {0xFF000000, 0xFFFFFFFF});
    const auto whiteFirst = MakeIndexed(PixelFormat::Indexed1, {0xFFFFFFFF, 0xFF000000});
    EXPECT_EQ(TagsOf(*blackFirst).compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(TagsOf(*blackFirst).photometric, PHOTOMETRIC_MINISBLACK);
    EXPECT_EQ(TagsOf(*whiteFirst).compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(TagsOf(*whiteFirst).photometric, PHOTOMETRIC_MINISWHITE);
    EXPECT_EQ(ColorsOf(*Rewritten(TiffCodec(), *blackFirst)), ColorsOf(*blackFirst));
    EXPECT_EQ(ColorsOf(*Rewritten(TiffCodec(), *whiteFirst)), ColorsOf(*whiteFirst));
}

TEST(TiffWriter, TwoOtherColorsAreAPalette) {
    const Tags tags = TagsOf(*MakeIndexed(PixelFormat::Indexed1, {0xFF123456, 0xFFFFFFFF}));
    EXPECT_EQ(tags.photometric, PHOTOMETRIC_PALETTE);
    EXPECT_EQ(tags.bits, 1);
    EXPECT_EQ(tags.compression, COMPRESSION_LZW);
}

TEST(TiffWriter, GreyRampIsGrey) {
    for (const PixelFormat format : {PixelFormat::Indexed4, PixelFormat::Indexed8}) {
        const auto picture = MakeIndexed(format, GreyPalette(1u << BitsPerPixel(format)));
        const Tags tags = TagsOf(*picture);
        EXPECT_EQ(tags.photometric, PHOTOMETRIC_MINISBLACK);
        EXPECT_EQ(tags.bits, static_cast<int>(BitsPerPixel(format)));
        EXPECT_EQ(ColorsOf(*Rewritten(TiffCodec(), *picture)), ColorsOf(*picture));
    }
}

TEST(TiffWriter, ShortPaletteIsFilledUpWithBlack) {
    const auto picture = MakeIndexed(PixelFormat::Indexed8, {0xFF112233, 0xFF445566});
    EXPECT_EQ(ColorsOf(*Rewritten(TiffCodec(), *picture)), ColorsOf(*picture));
}

TEST(TiffWriter, PaletteWithTransparencyIsRgba) {
    const auto picture = MakeIndexed(PixelFormat::Indexed4, {0xFF112233, 0x00445566, 0x80FFFFFF});
    const Tags tags = TagsOf(*picture);
    EXPECT_EQ(tags.samples, 4);
    EXPECT_EQ(tags.extraSample, EXTRASAMPLE_UNASSALPHA);
    EXPECT_EQ(ColorsOf(*Rewritten(TiffCodec(), *picture)), ColorsOf(*picture));
}

TEST(TiffWriter, OpaqueColorsAreRgb) {
    for (const PixelFormat format :
         {PixelFormat::Rgb555, PixelFormat::Rgb565, PixelFormat::Rgb24, PixelFormat::Rgb32, PixelFormat::Rgb48}) {
        const Tags tags = TagsOf(*MakePicture(format, 9, 4));
        EXPECT_EQ(tags.photometric, PHOTOMETRIC_RGB);
        EXPECT_EQ(tags.bits, 8);
        EXPECT_EQ(tags.samples, 3);
        EXPECT_EQ(tags.compression, COMPRESSION_LZW);
        EXPECT_EQ(tags.predictor, PREDICTOR_HORIZONTAL);
    }
}

TEST(TiffWriter, ColorsWithAlphaAreRgba) {
    for (const PixelFormat format : {PixelFormat::Argb1555, PixelFormat::Argb32, PixelFormat::Pargb32}) {
        const Tags tags = TagsOf(*MakePicture(format, 9, 4));
        EXPECT_EQ(tags.photometric, PHOTOMETRIC_RGB);
        EXPECT_EQ(tags.samples, 4);
        EXPECT_EQ(tags.extraSample, EXTRASAMPLE_UNASSALPHA);
        EXPECT_EQ(tags.compression, COMPRESSION_LZW);
    }
}

TEST(TiffWriter, FileIsLittleEndianInStripsOfHalfAMegabyte) {
    const Tags tags = TagsOf(*MakePicture(PixelFormat::Rgb24, 1000, 300));
    EXPECT_FALSE(tags.isBigEndian);
    EXPECT_EQ(tags.rowsPerStrip, 524288u / 3000);
}

TEST(TiffWriter, ResolutionIsKept) {
    auto info = MakePicture(PixelFormat::Rgb24, 3, 3)->Info();
    info.resolution = {300, 72.5};
    const Tags tags = TagsOf(**Bitmap::Create(info));
    EXPECT_FLOAT_EQ(tags.horizontal, 300);
    EXPECT_FLOAT_EQ(tags.vertical, 72.5);
    EXPECT_EQ(tags.unit, RESUNIT_INCH);
}

TEST(TiffWriter, UnknownResolutionIs96) {
    const Tags tags = TagsOf(*MakePicture(PixelFormat::Rgb24, 3, 3));
    EXPECT_FLOAT_EQ(tags.horizontal, 96);
    EXPECT_FLOAT_EQ(tags.vertical, 96);
}

TEST(TiffWriter, FailureOfTheFileIsGivenBack) {
    const auto noise =
        MakePictureOf(400, 400, [](auto x, auto y) { return ((x * 2654435761u) ^ (y * 40503u * 97u)) * 31; });
    for (const std::size_t limit : {0u, 70000u, 300000u}) {
        MemoryOutput file(limit);
        EXPECT_EQ(TiffCodec().write(*noise, {}, {}, file), Status::AccessDenied) << limit;
    }
}

// Counts the rows that are read of a picture.
class CountedPicture : public PixelSource {
  public:
    explicit CountedPicture(std::shared_ptr<const PixelSource> picture) : picture_(std::move(picture)) {}

    const PictureInfo& Info() const override { return picture_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto rows = picture_->OpenRows();
        return std::unique_ptr<RowReader>(std::make_unique<Rows>(std::move(*rows), rowsRead_));
    }

    std::uint32_t RowsRead() const { return rowsRead_; }

  private:
    class Rows : public RowReader {
      public:
        Rows(std::unique_ptr<RowReader> rows, std::uint32_t& count) : rows_(std::move(rows)), count_(count) {}

        Status ReadRow(std::uint8_t* row) override {
            ++count_;
            return rows_->ReadRow(row);
        }

      private:
        std::unique_ptr<RowReader> rows_;
        std::uint32_t& count_;
    };

    std::shared_ptr<const PixelSource> picture_;
    mutable std::uint32_t rowsRead_ = 0;
};

// A few strips are under way at most, so a failure ends the reading soon.
TEST(TiffWriter, StripsAreWrittenWhileRowsAreRead) {
    constexpr std::uint32_t StripsOfThePicture = 24, RowsOfAStrip = 128;
    const CountedPicture noise(MakePictureOf(1024, StripsOfThePicture * RowsOfAStrip, [](auto x, auto y) {
        return ((x * 2654435761u) ^ (y * 40503u * 97u)) * 31;
    }));
    MemoryOutput file(100000);
    EXPECT_EQ(TiffCodec().write(noise, {}, {}, file), Status::AccessDenied);
    EXPECT_LT(noise.RowsRead(), StripsOfThePicture * RowsOfAStrip / 3);
}

} // namespace
