// JPEG files as they are written.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr PixelFormat JpegFormats[] = {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                       PixelFormat::Rgb555,   PixelFormat::Rgb565,   PixelFormat::Argb1555,
                                       PixelFormat::Rgb24,    PixelFormat::Rgb32,    PixelFormat::Argb32,
                                       PixelFormat::Pargb32,  PixelFormat::Rgb48};

Color SmoothColor(std::uint32_t x, std::uint32_t y) {
    return MakeColor(SmoothSample(x, y, 0), SmoothSample(x, y, 1), SmoothSample(x, y, 2));
}

unsigned ByteAt(const std::string& bytes, std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); }

// Where JFIF's marker has the density's unit; the two densities follow.
constexpr std::size_t DensityUnit = 13;

unsigned Number16At(const std::string& bytes, std::size_t at) { return ByteAt(bytes, at) << 8 | ByteAt(bytes, at + 1); }

std::string JpegWrittenWith(Resolution resolution) {
    PictureInfo info{.width = 3, .height = 2, .format = PixelFormat::Rgb24, .resolution = resolution};
    return BytesWritten(JpegCodec(), **Bitmap::Create(info));
}

TEST(JpegWriting, WhatIsWrittenReadsBackAlike) {
    for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {8u, 8u}, {17u, 3u}, {65u, 33u}, {200u, 100u}}) {
        const auto picture = MakePictureOf(width, height, SmoothColor);
        const auto read = OpenBytes(JpegCodec(), BytesWritten(JpegCodec(), *picture));
        ASSERT_TRUE(read.Ok());
        EXPECT_EQ((*read)->Info().width, width);
        EXPECT_EQ((*read)->Info().height, height);
        EXPECT_GT(PeakSignalToNoise(ColorsOf(**read), ColorsOf(*picture)), 33) << width << 'x' << height;
    }
}

TEST(JpegWriting, EveryFormatIsWrittenAsTrueColorOverWhite) {
    for (const PixelFormat format : JpegFormats) {
        for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {65u, 33u}}) {
            const auto picture = MakePicture(format, width, height);
            const auto overWhite = *Bitmap::Copy(*ConvertedTo(picture, PixelFormat::Rgb24));
            const std::string bytes = BytesWritten(JpegCodec(), *picture);
            EXPECT_FALSE(bytes.empty());
            EXPECT_EQ(bytes, BytesWritten(JpegCodec(), *overWhite)) << std::hex << static_cast<unsigned>(format);
        }
    }
}

TEST(JpegWriting, ClearPixelsAreWhite) {
    const auto clear = MakePictureOf(9, 9, [](auto, auto) { return Color{0}; });
    const auto read = OpenBytes(JpegCodec(), BytesWritten(JpegCodec(), *clear));
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ(ColorsOf(**read), std::vector<Color>(81, MakeColor(255, 255, 255)));
}

TEST(JpegWriting, FrameIsBaselineWithHalfResolutionColor) {
    for (const PixelFormat format : {PixelFormat::Rgb24, PixelFormat::Indexed8}) {
        const std::string bytes = BytesWritten(JpegCodec(), *MakePicture(format, 20, 10));
        const std::size_t frame = FindMarker(bytes, 0xC0);
        ASSERT_NE(frame, std::string::npos);
        EXPECT_EQ(Number16At(bytes, frame + 5), 10u);
        EXPECT_EQ(Number16At(bytes, frame + 7), 20u);
        EXPECT_EQ(ByteAt(bytes, frame + 9), 3u);
        EXPECT_EQ(ByteAt(bytes, frame + 11), 0x22u);
        EXPECT_EQ(ByteAt(bytes, frame + 14), 0x11u);
        EXPECT_EQ(ByteAt(bytes, frame + 17), 0x11u);
    }
}

TEST(JpegWriting, QuantisationIsThatOfQuality75) {
    const std::string bytes = BytesWritten(JpegCodec(), *MakePicture(PixelFormat::Rgb24, 20, 10));
    const std::size_t luminance = FindMarker(bytes, 0xDB);
    ASSERT_NE(luminance, std::string::npos);
    EXPECT_EQ(bytes.substr(luminance + 5, 4), "\x08\x06\x06\x07");
    const std::size_t chrominance = FindMarker(bytes, 0xDB, luminance + 2);
    ASSERT_NE(chrominance, std::string::npos);
    EXPECT_EQ(bytes.substr(chrominance + 5, 4), "\x09\x09\x09\x0C");
}

TEST(JpegWriting, ResolutionIsInWholeDotsPerInch) {
    const std::string bytes = JpegWrittenWith({299.999, 72.5});
    EXPECT_EQ(bytes.substr(6, 7), (std::string{'J', 'F', 'I', 'F', '\0', 1, 1}));
    EXPECT_EQ(ByteAt(bytes, DensityUnit), 1u);
    EXPECT_EQ(Number16At(bytes, DensityUnit + 1), 299u);
    EXPECT_EQ(Number16At(bytes, DensityUnit + 3), 72u);
}

TEST(JpegWriting, UnknownResolutionIsThatOfTheScreen) {
    const std::string bytes = JpegWrittenWith({});
    EXPECT_EQ(Number16At(bytes, DensityUnit + 1), 96u);
    EXPECT_EQ(Number16At(bytes, DensityUnit + 3), 96u);
}

TEST(JpegWriting, ResolutionsOutOfRangeAreBroughtIntoIt) {
    const std::string bytes = JpegWrittenWith({0.25, 1e9});
    EXPECT_EQ(Number16At(bytes, DensityUnit + 1), 1u);
    EXPECT_EQ(Number16At(bytes, DensityUnit + 3), 65535u);
}

TEST(JpegWriting, SideAbove65500IsInvalid) {
    for (const auto& [width, height] : {std::pair{65501u, 1u}, {1u, 65501u}}) {
        const auto picture = *Bitmap::Create({.width = width, .height = height, .format = PixelFormat::Indexed1});
        MemoryOutput file;
        EXPECT_EQ(JpegCodec().write(*picture, {}, {}, file), Status::InvalidParameter);
        EXPECT_EQ(file.Size(), 0u);
    }
    const auto longest = *Bitmap::Create({.width = 65500, .height = 1, .format = PixelFormat::Indexed1});
    EXPECT_FALSE(BytesWritten(JpegCodec(), *longest).empty());
}

TEST(JpegWriting, FullDiskIsTheWritersStatus) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 900, 900);
    ASSERT_GT(BytesWritten(JpegCodec(), *picture).size(), 66000u);
    MemoryOutput file(1000);
    EXPECT_EQ(JpegCodec().write(*picture, {}, {}, file), MemoryOutput::DiskFull);
}

TEST(JpegWriting, BrokenSourceIsTheWritersStatus) {
    const std::string whole = MakeJpeg({.width = 64, .height = 64});
    const auto cut = OpenBytes(JpegCodec(), whole.substr(0, whole.size() - 20));
    ASSERT_TRUE(cut.Ok());
    (*cut)->Damage()->Refuse();
    MemoryOutput file;
    EXPECT_EQ(JpegCodec().write(**cut, {}, {}, file), UndecodableContent);
}

} // namespace
