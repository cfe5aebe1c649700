// The flat interface from outside: statuses, handles, sessions, locks, threads.
#include "tests/support/codecs.h"
#include "tests/support/flatfunctions.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr GdiplusStartupInput VersionOne{1, nullptr, 0, 0};

GpImage* const Foreign = reinterpret_cast<GpImage*>(0x7654321);

// A test with a session, and a picture file to work on.
class Flat : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(flat::GdiplusStartup(&token_, &VersionOne, nullptr), Status::Ok);
        const auto picture = MakePicture(PixelFormat::Rgb24, 40, 20);
        ASSERT_EQ(WritePicture(BmpCodec(), *picture, source_), Status::Ok);
    }

    void TearDown() override { flat::GdiplusShutdown(token_); }

    GpImage* Load(const std::filesystem::path& path) {
        GpImage* image = nullptr;
        EXPECT_EQ(flat::GdipLoadImageFromFile(path.u16string().c_str(), &image), Status::Ok);
        return image;
    }

    Status Save(GpImage* image, const std::filesystem::path& path, const Codec& codec = PngCodec()) {
        return flat::GdipSaveImageToFile(image, path.u16string().c_str(), &codec.classId);
    }

    TemporaryFolder folder_;
    std::filesystem::path source_ = folder_ / "source.bmp";
    std::uintptr_t token_ = 0;
};

TEST(FlatSession, NothingWorksWithoutOne) {
    GpImage* image = nullptr;
    std::uint32_t count = 7;
    EXPECT_EQ(flat::GdipLoadImageFromFile(u"x", &image), Status::GdiplusNotInitialized);
    EXPECT_EQ(flat::GdipGetImageEncodersSize(&count, &count), Status::GdiplusNotInitialized);
    EXPECT_EQ(flat::GdipDisposeImage(nullptr), Status::GdiplusNotInitialized);
    EXPECT_EQ(count, 7u);
}

TEST(FlatSession, SessionsAreCounted) {
    std::uintptr_t first = 0, second = 0;
    std::uint32_t count = 0, bytes = 0;
    ASSERT_EQ(flat::GdiplusStartup(&first, &VersionOne, nullptr), Status::Ok);
    ASSERT_EQ(flat::GdiplusStartup(&second, &VersionOne, nullptr), Status::Ok);
    EXPECT_NE(first, second);
    flat::GdiplusShutdown(first);
    flat::GdiplusShutdown(first);
    flat::GdiplusShutdown(static_cast<std::uintptr_t>(-16001));
    EXPECT_EQ(flat::GdipGetImageEncodersSize(&count, &bytes), Status::Ok);
    flat::GdiplusShutdown(second);
    EXPECT_EQ(flat::GdipGetImageEncodersSize(&count, &bytes), Status::GdiplusNotInitialized);
}

TEST(FlatSession, BadStartIsRefused) {
    std::uintptr_t token = 0;
    const GdiplusStartupInput versionZero{0, nullptr, 0, 0};
    const GdiplusStartupInput versionFour{4, nullptr, 0, 0};
    const GdiplusStartupInput suppressing{1, nullptr, 1, 0};
    GdiplusStartupOutput output{};
    EXPECT_EQ(flat::GdiplusStartup(nullptr, &VersionOne, nullptr), Status::InvalidParameter);
    EXPECT_EQ(flat::GdiplusStartup(&token, nullptr, nullptr), Status::InvalidParameter);
    EXPECT_EQ(flat::GdiplusStartup(&token, &suppressing, nullptr), Status::InvalidParameter);
    EXPECT_EQ(flat::GdiplusStartup(&token, &versionZero, nullptr), Status::UnsupportedGdiplusVersion);
    EXPECT_EQ(flat::GdiplusStartup(&token, &versionFour, nullptr), Status::UnsupportedGdiplusVersion);
    EXPECT_EQ(token, 0u);
    EXPECT_EQ(flat::GdiplusStartup(&token, &suppressing, &output), Status::Ok);
    flat::GdiplusShutdown(token);
}

TEST_F(Flat, LoadAnswersWhatIsWrongWithAFile) {
    GpImage* image = Foreign;
    WriteBytes(folder_ / "empty.png", "");
    WriteBytes(folder_ / "garbage.png", "this is no picture at all");
    WriteBytes(folder_ / "cut.png", "\x89PNG\r\n\x1a\n");
    const auto load = [&](const std::string& name) {
        return flat::GdipLoadImageFromFile((folder_ / name).u16string().c_str(), &image);
    };
    EXPECT_EQ(load("missing.png"), Status::FileNotFound);
    EXPECT_EQ(image, nullptr);
    EXPECT_EQ(load("empty.png"), Status::OutOfMemory);
    EXPECT_EQ(load("garbage.png"), Status::OutOfMemory);
    EXPECT_EQ(load("cut.png"), Status::OutOfMemory);
    EXPECT_EQ(load("."), Status::GenericError);
    EXPECT_EQ(flat::GdipLoadImageFromFile(nullptr, &image), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipLoadImageFromFile(u"x", nullptr), Status::InvalidParameter);
}

TEST_F(Flat, SizeAndFormatAreThoseOfTheFile) {
    GpImage* image = Load(source_);
    std::uint32_t width = 0, height = 0;
    PixelFormat format{};
    EXPECT_EQ(flat::GdipGetImageWidth(image, &width), Status::Ok);
    EXPECT_EQ(flat::GdipGetImageHeight(image, &height), Status::Ok);
    EXPECT_EQ(flat::GdipGetImagePixelFormat(image, &format), Status::Ok);
    EXPECT_EQ(width, 40u);
    EXPECT_EQ(height, 20u);
    EXPECT_EQ(format, PixelFormat::Rgb24);
    EXPECT_EQ(flat::GdipDisposeImage(image), Status::Ok);
}

TEST_F(Flat, HandlesAreChecked) {
    GpImage* disposed = Load(source_);
    ASSERT_EQ(flat::GdipDisposeImage(disposed), Status::Ok);
    GpImage* reused = Load(source_);
    EXPECT_NE(disposed, reused);
    for (GpImage* bad : {static_cast<GpImage*>(nullptr), Foreign, disposed}) {
        std::uint32_t width = 7;
        GpImage* made = Foreign;
        PixelFormat format{};
        EXPECT_EQ(flat::GdipGetImageWidth(bad, &width), Status::InvalidParameter);
        EXPECT_EQ(flat::GdipGetImageHeight(bad, &width), Status::InvalidParameter);
        EXPECT_EQ(flat::GdipGetImagePixelFormat(bad, &format), Status::InvalidParameter);
        EXPECT_EQ(flat::GdipCloneImage(bad, &made), Status::InvalidParameter);
        EXPECT_EQ(flat::GdipGetImageThumbnail(bad, 5, 5, &made), Status::InvalidParameter);
        EXPECT_EQ(Save(bad, folder_ / "out.png"), Status::InvalidParameter);
        EXPECT_EQ(flat::GdipDisposeImage(bad), Status::InvalidParameter);
        EXPECT_EQ(width, 7u);
        EXPECT_EQ(made, Foreign);
    }
    EXPECT_EQ(flat::GdipGetImageWidth(reused, nullptr), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipCloneImage(reused, nullptr), Status::InvalidParameter);
    flat::GdipDisposeImage(reused);
}

TEST_F(Flat, SaveOntoItsOwnSourceIsRefused) {
    const std::string before = ReadBytes(source_);
    GpImage* image = Load(source_);
    EXPECT_EQ(Save(image, source_, BmpCodec()), Status::GenericError);
    flat::GdipDisposeImage(image);
    EXPECT_EQ(ReadBytes(source_), before);
}

TEST_F(Flat, CloneKeepsTheFileInUse) {
    GpImage* image = Load(source_);
    GpImage* clone = nullptr;
    ASSERT_EQ(flat::GdipCloneImage(image, &clone), Status::Ok);
    ASSERT_EQ(flat::GdipDisposeImage(image), Status::Ok);
    EXPECT_EQ(Save(clone, source_, BmpCodec()), Status::GenericError);
    EXPECT_EQ(Save(clone, folder_ / "copy.bmp", BmpCodec()), Status::Ok);
    flat::GdipDisposeImage(clone);
    EXPECT_EQ(ReadBytes(folder_ / "copy.bmp"), ReadBytes(source_));
}

TEST_F(Flat, SaveThatCannotBeDoneLeavesNothing) {
    GpImage* image = Load(source_);
    const Guid unknown{};
    EXPECT_EQ(Save(image, folder_ / "missing" / "out.png"), Status::GenericError);
    EXPECT_EQ(Save(image, folder_.Path()), Status::GenericError);
    EXPECT_EQ(flat::GdipSaveImageToFile(image, (folder_ / "a.ico").u16string().c_str(), &unknown),
              Status::UnknownImageFormat);
    EXPECT_EQ(Save(image, folder_ / "a.ico", IcoCodec()), Status::UnknownImageFormat);
    EXPECT_EQ(flat::GdipSaveImageToFile(image, nullptr, &PngCodec().classId), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipSaveImageToFile(image, u"x", nullptr), Status::InvalidParameter);
    flat::GdipDisposeImage(image);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(Flat, BrokenPictureIsNoticedAtTheSaveAndLeavesTheOldTarget) {
    const std::string whole = ReadBytes(source_);
    WriteBytes(folder_ / "cut.bmp", whole.substr(0, whole.size() / 2));
    WriteBytes(folder_ / "out.png", "old");
    GpImage* image = Load(folder_ / "cut.bmp");
    EXPECT_EQ(Save(image, folder_ / "out.png"), Status::OutOfMemory);
    flat::GdipDisposeImage(image);
    EXPECT_EQ(ReadBytes(folder_ / "out.png"), "old");
}

TEST_F(Flat, ThumbnailHasTheAskedSize) {
    GpImage* image = Load(source_);
    const auto sizeOf = [&](std::uint32_t width, std::uint32_t height) {
        GpImage* thumbnail = nullptr;
        EXPECT_EQ(flat::GdipGetImageThumbnail(image, width, height, &thumbnail), Status::Ok);
        std::pair<std::uint32_t, std::uint32_t> size;
        flat::GdipGetImageWidth(thumbnail, &size.first);
        flat::GdipGetImageHeight(thumbnail, &size.second);
        PixelFormat format{};
        flat::GdipGetImagePixelFormat(thumbnail, &format);
        EXPECT_EQ(format, PixelFormat::Pargb32);
        flat::GdipDisposeImage(thumbnail);
        return size;
    };
    EXPECT_EQ(sizeOf(10, 7), std::pair(10u, 7u));
    EXPECT_EQ(sizeOf(80, 60), std::pair(80u, 60u));
    EXPECT_EQ(sizeOf(0, 0), std::pair(120u, 120u));
    EXPECT_EQ(sizeOf(0, 9), std::pair(120u, 9u));
    GpImage* none = nullptr;
    EXPECT_EQ(flat::GdipGetImageThumbnail(image, static_cast<std::uint32_t>(-5), 5, &none), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipGetImageThumbnail(image, 5, 5, nullptr), Status::InvalidParameter);
    flat::GdipDisposeImage(image);
}

TEST_F(Flat, EncodersComeInThePlatformsOrder) {
    std::uint32_t count = 0, bytes = 0;
    ASSERT_EQ(flat::GdipGetImageEncodersSize(&count, &bytes), Status::Ok);
    ASSERT_EQ(count, 5u);
    std::vector<std::uint64_t> block(bytes / 8 + 1);
    auto* list = reinterpret_cast<ImageCodecInfo*>(block.data());
    ASSERT_EQ(flat::GdipGetImageEncoders(count, bytes, list), Status::Ok);
    const char16_t* const types[] = {u"image/bmp", u"image/jpeg", u"image/gif", u"image/tiff", u"image/png"};
    const char16_t* const extensions[] = {u"*.BMP;*.DIB;*.RLE", u"*.JPG;*.JPEG;*.JPE;*.JFIF", u"*.GIF", u"*.TIF;*.TIFF",
                                          u"*.PNG"};
    const char16_t* const descriptions[] = {u"BMP", u"JPEG", u"GIF", u"TIFF", u"PNG"};
    const std::uint32_t formats[] = {0xB96B3CAB, 0xB96B3CAE, 0xB96B3CB0, 0xB96B3CB1, 0xB96B3CAF};
    const Guid class0{0x557CF400, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    EXPECT_EQ(list[0].clsid, class0);
    for (std::size_t i = 0; i < count; ++i) {
        const Guid format{formats[i], 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
        EXPECT_EQ(list[i].formatId, format);
        EXPECT_EQ(std::u16string_view(list[i].filenameExtension), extensions[i]);
        EXPECT_EQ(std::u16string_view(list[i].mimeType), types[i]);
        EXPECT_EQ(list[i].clsid.data1, 0x557cf400u + (i < 3 ? i : i + 2));
        EXPECT_EQ(list[i].flags, 0x10007u);
        EXPECT_EQ(list[i].version, 1u);
        EXPECT_EQ(list[i].formatDescription, std::u16string(descriptions[i]));
        EXPECT_EQ(list[i].signaturePattern[0], static_cast<std::uint8_t>(std::string_view("B\xFFGI\x89")[i]));
    }
}

TEST_F(Flat, EncoderListOfAnotherSizeIsRefused) {
    std::uint32_t count = 0, bytes = 0;
    ASSERT_EQ(flat::GdipGetImageEncodersSize(&count, &bytes), Status::Ok);
    std::vector<std::uint64_t> block(bytes / 8 + 2);
    auto* list = reinterpret_cast<ImageCodecInfo*>(block.data());
    EXPECT_EQ(flat::GdipGetImageEncoders(count - 1, bytes, list), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipGetImageEncoders(count, bytes - 1, list), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipGetImageEncoders(count, bytes + 1, list), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipGetImageEncoders(count, bytes, nullptr), Status::InvalidParameter);
    EXPECT_EQ(flat::GdipGetImageEncodersSize(nullptr, &bytes), Status::InvalidParameter);
}

TEST_F(Flat, SeveralThreadsWorkOnSeveralImagesAndOnOne) {
    GpImage* shared = Load(source_);
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            for (int round = 0; round < 10; ++round) {
                GpImage* own = Load(source_);
                const std::string name = std::to_string(number) + "-" + std::to_string(round);
                EXPECT_EQ(Save(own, folder_ / (name + "-own.bmp"), BmpCodec()), Status::Ok);
                EXPECT_EQ(Save(shared, folder_ / (name + "-shared.bmp"), BmpCodec()), Status::Ok);
                EXPECT_EQ(flat::GdipDisposeImage(own), Status::Ok);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    flat::GdipDisposeImage(shared);
    const std::string expected = ReadBytes(source_);
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        EXPECT_EQ(ReadBytes(entry.path()), expected) << entry.path();
    }
}

} // namespace
