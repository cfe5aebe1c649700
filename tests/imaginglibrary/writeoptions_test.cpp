// What encoders leave to choose: quality and compression, by the options and by the parameters of the flat interface.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/codecs.h"
#include "tests/support/flatdrawing.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>
#include <jpeglib.h>
#include <tiffio.h>

#include <cstddef>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::string WrittenBy(const Codec& codec, const PixelSource& picture, const WriteOptions& options) {
    MemoryOutput file;
    EXPECT_EQ(codec.write(picture, {}, options, file), Status::Ok);
    EXPECT_EQ(file.Commit(), Status::Ok);
    return file.Bytes();
}

// The first steps of the luminance table, which say what quality a file was made at.
std::vector<int> FirstSteps(const std::string& jpeg) {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(jpeg.data()), static_cast<unsigned long>(jpeg.size()));
    jpeg_read_header(&info, TRUE);
    const std::vector<int> steps(info.quant_tbl_ptrs[0]->quantval, info.quant_tbl_ptrs[0]->quantval + 4);
    jpeg_destroy_decompress(&info);
    return steps;
}

TEST(WriteOptionsOfJpeg, QualityChoosesTheTables) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 40, 30);
    EXPECT_EQ(FirstSteps(WrittenBy(JpegCodec(), *picture, {})), (std::vector{8, 6, 5, 8}));
    EXPECT_EQ(FirstSteps(WrittenBy(JpegCodec(), *picture, {.quality = 100})), (std::vector{1, 1, 1, 1}));
    EXPECT_EQ(FirstSteps(WrittenBy(JpegCodec(), *picture, {.quality = 50})), (std::vector{16, 11, 10, 16}));
    EXPECT_EQ(FirstSteps(WrittenBy(JpegCodec(), *picture, {.quality = 25})), (std::vector{32, 22, 20, 32}));
}

// Text-like: what repeats itself, but not exactly.
std::shared_ptr<Bitmap> MakeMarks() {
    return MakePictureOf(600, 300, [](auto x, auto y) {
        const unsigned mark = (x / 9 * 7919u + y / 14 * 104729u) % 31;
        return (mark * (x % 9) + y % 14 * mark / 3) % 7 < 3 && x % 9 < 7 ? Black : White;
    });
}

TEST(WriteOptionsOfPng, EffortMakesFilesSmaller) {
    const auto picture = MakeMarks();
    const std::string usual = WrittenBy(PngCodec(), *picture, {});
    const std::string quick = WrittenBy(PngCodec(), *picture, {.compression = Compression::Quick});
    const std::string small = WrittenBy(PngCodec(), *picture, {.compression = Compression::Small});
    EXPECT_LT(usual.size() * 11, quick.size() * 10);
    EXPECT_LT(small.size(), usual.size());
    for (const std::string& file : {usual, quick, small}) {
        EXPECT_EQ(ColorsOf(*Opened(PngCodec(), file)), ColorsOf(*picture));
    }
    EXPECT_EQ(WrittenBy(PngCodec(), *picture, {.compression = Compression::Lzw}), usual) << "which is TIFF's";
}

struct TiffTags {
    int compression = 0;
    int predictor = PREDICTOR_NONE;
    int photometric = 0;
};

TiffTags TagsIn(const std::string& bytes) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a.tif", bytes);
    TIFF* const tiff = TIFFOpen((folder / "a.tif").string().c_str(), "r");
    const auto tag = [&](std::uint32_t number) {
        std::uint16_t value = 0;
        TIFFGetFieldDefaulted(tiff, number, &value);
        return int{value};
    };
    TiffTags tags{.compression = tag(TIFFTAG_COMPRESSION), .photometric = tag(TIFFTAG_PHOTOMETRIC)};
    if (tags.compression == COMPRESSION_LZW || tags.compression == COMPRESSION_ADOBE_DEFLATE) {
        tags.predictor = tag(TIFFTAG_PREDICTOR);
    }
    TIFFClose(tiff);
    return tags;
}

TEST(WriteOptionsOfTiff, NothingIsLostByAnyCompressionButJpeg) {
    const std::pair<Compression, int> compressions[] = {{Compression::None, COMPRESSION_NONE},
                                                        {Compression::Lzw, COMPRESSION_LZW},
                                                        {Compression::Deflate, COMPRESSION_ADOBE_DEFLATE}};
    for (const PixelFormat format : {PixelFormat::Rgb24, PixelFormat::Argb32, PixelFormat::Indexed1,
                                     PixelFormat::Indexed4, PixelFormat::Indexed8}) {
        const auto picture = MakePicture(format, 1001, 300); // more than a strip in true colour
        for (const auto& [compression, tag] : compressions) {
            const std::string file = WrittenBy(TiffCodec(), *picture, {.compression = compression});
            EXPECT_EQ(TagsIn(file).compression, tag);
            EXPECT_EQ(ColorsOf(*Opened(TiffCodec(), file)), ColorsOf(*picture)) << tag;
        }
    }
}

TEST(WriteOptionsOfTiff, ColorsAreForetoldWhereThatIsCompressed) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 40, 30);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *picture, {.compression = Compression::Deflate})).predictor,
              PREDICTOR_HORIZONTAL);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *picture, {})).compression, COMPRESSION_LZW);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *picture, {.compression = Compression::Quick})).compression,
              COMPRESSION_LZW);
}

TEST(WriteOptionsOfTiff, JpegIsForColorsAndGrey) {
    const auto smooth = MakePictureOf(300, 500, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x / 2), static_cast<std::uint8_t>(y / 2), 90);
    });
    const auto opaque = ConvertedTo(smooth, PixelFormat::Rgb24);
    const std::string file = WrittenBy(TiffCodec(), *opaque, {.quality = 95, .compression = Compression::Jpeg});
    EXPECT_EQ(TagsIn(file).compression, COMPRESSION_JPEG);
    EXPECT_EQ(TagsIn(file).photometric, PHOTOMETRIC_YCBCR);
    EXPECT_GT(PeakSignalToNoise(ColorsOf(*Opened(TiffCodec(), file)), ColorsOf(*smooth)), 38);
    EXPECT_LT(WrittenBy(TiffCodec(), *opaque, {.quality = 20, .compression = Compression::Jpeg}).size() * 3,
              file.size() * 2);

    PictureInfo info{.width = 64, .height = 64, .format = PixelFormat::Indexed8, .palette = GreyPalette(256)};
    const auto grey = *Bitmap::Create(info);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *grey, {.compression = Compression::Jpeg})).photometric,
              PHOTOMETRIC_MINISBLACK);
    for (const PixelFormat format : {PixelFormat::Argb32, PixelFormat::Indexed8, PixelFormat::Indexed1}) {
        MemoryOutput refused;
        EXPECT_EQ(TiffCodec().write(*MakePicture(format, 9, 9), {}, {.compression = Compression::Jpeg}, refused),
                  Status::InvalidParameter);
    }
}

TEST(WriteOptionsOfTiff, StripsOfJpegAreWholeBlocksHigh) {
    for (const auto& [height, rows] : {std::pair(1u, 16u), {15u, 16u}, {16u, 16u}, {17u, 32u}, {300u, 304u}}) {
        const auto picture = ConvertedTo(WhitePicture(9, height), PixelFormat::Rgb24);
        const std::string file = WrittenBy(TiffCodec(), *picture, {.compression = Compression::Jpeg});
        const auto properties = OpenBytes(TiffCodec(), file);
        ASSERT_TRUE(properties.Ok());
        const Property* const perStrip = (*properties)->Properties().Find(0x0116);
        ASSERT_NE(perStrip, nullptr);
        EXPECT_EQ(perStrip->value[0] | perStrip->value[1] << 8, rows) << height;
        EXPECT_EQ(ColorsOf(**properties), std::vector<Color>(std::size_t{9} * height, White));
    }
}

TEST(WriteOptionsOfTiff, FaxIsForBlackAndWhite) {
    PictureInfo info{.width = 64, .height = 64, .format = PixelFormat::Indexed1, .palette = GreyPalette(2)};
    const auto lines = *Bitmap::Create(info);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *lines, {.compression = Compression::Fax})).compression,
              COMPRESSION_CCITTFAX4);
    EXPECT_EQ(TagsIn(WrittenBy(TiffCodec(), *lines, {.compression = Compression::Lzw})).compression, COMPRESSION_LZW);
    MemoryOutput refused;
    EXPECT_EQ(TiffCodec().write(*MakePicture(PixelFormat::Rgb24, 9, 9), {}, {.compression = Compression::Fax}, refused),
              Status::InvalidParameter);
}

constexpr Guid Quality{0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
constexpr Guid CompressionKind{0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};
constexpr Guid SaveFlag{0x292266FC, 0xAC40, 0x47BF, {0x8C, 0xFC, 0xA8, 0x5B, 0x89, 0xA6, 0x55, 0xDE}};
constexpr std::uint32_t Long = 4;

// Saves a small black picture with parameters.
class SavingWithParameters : public flat::FlatTest {
  protected:
    void Add(const Guid& guid, std::uint32_t value, std::uint32_t type = Long, std::uint32_t values = 1) {
        values_.push_back(std::make_unique<std::uint32_t>(value));
        items_.push_back({guid, values, type, values_.back().get()});
    }

    // With what was added since the last time.
    Status Save(const Codec& codec) {
        std::vector<std::byte> bytes(offsetof(EncoderParameters, parameter) + items_.size() * sizeof(EncoderParameter));
        auto* const block = reinterpret_cast<EncoderParameters*>(bytes.data());
        block->count = static_cast<std::uint32_t>(items_.size());
        std::copy(items_.begin(), items_.end(), block->parameter);
        items_.clear();
        GpImage* const image = NewBitmap(30, 20, PixelFormat::Rgb24);
        return flat::GdipSaveImageToFile(image, Path().u16string().c_str(), &codec.classId, block);
    }

    template <class... Values> Status SaveWith(const Guid& guid, Values... values) {
        Add(guid, values...);
        return Save(JpegCodec());
    }

    std::filesystem::path Path() const { return folder_ / "a"; }

  private:
    std::vector<std::unique_ptr<std::uint32_t>> values_;
    std::vector<EncoderParameter> items_;
};

TEST_F(SavingWithParameters, KnownOnesAreTakenAndOthersPassedOver) {
    Add(SaveFlag, 20);
    Add(Quality, 25);
    ASSERT_EQ(Save(JpegCodec()), Status::Ok);
    EXPECT_EQ(FirstSteps(ReadBytes(Path())), (std::vector{32, 22, 20, 32}));
    ASSERT_EQ(Save(JpegCodec()), Status::Ok);
    EXPECT_EQ(FirstSteps(ReadBytes(Path())), (std::vector{8, 6, 5, 8})) << "75 without any";
}

TEST_F(SavingWithParameters, CompressionsHaveNumbers) {
    for (const auto& [number, tag] :
         {std::pair(2u, COMPRESSION_LZW), std::pair(6u, COMPRESSION_NONE),
          std::pair(0x10003u, COMPRESSION_ADOBE_DEFLATE), std::pair(0x10004u, COMPRESSION_JPEG)}) {
        Add(CompressionKind, number);
        ASSERT_EQ(Save(TiffCodec()), Status::Ok) << number;
        EXPECT_EQ(TagsIn(ReadBytes(Path())).compression, tag);
    }
    Add(CompressionKind, 4);
    EXPECT_EQ(Save(TiffCodec()), Status::InvalidParameter) << "fax is for black and white";
}

TEST_F(SavingWithParameters, EffortsOfPngHaveNumbersToo) {
    Add(CompressionKind, 0x10001);
    ASSERT_EQ(Save(PngCodec()), Status::Ok);
    const std::size_t quick = ReadBytes(Path()).size();
    Add(CompressionKind, 0x10002);
    ASSERT_EQ(Save(PngCodec()), Status::Ok);
    EXPECT_LE(ReadBytes(Path()).size(), quick);
}

TEST_F(SavingWithParameters, WhatHasNoMeaningIsRefused) {
    EXPECT_EQ(SaveWith(Quality, 100u), Status::Ok);
    EXPECT_EQ(SaveWith(Quality, 0u), Status::Ok);
    EXPECT_EQ(SaveWith(Quality, 101u), Status::InvalidParameter);
    EXPECT_EQ(SaveWith(Quality, 50u, 3u), Status::InvalidParameter) << "16 bits";
    EXPECT_EQ(SaveWith(Quality, 50u, Long, 2u), Status::InvalidParameter) << "two numbers";
    EXPECT_EQ(SaveWith(CompressionKind, 1u), Status::InvalidParameter);
    EXPECT_EQ(SaveWith(CompressionKind, 2u, 3u), Status::InvalidParameter);
}

} // namespace
