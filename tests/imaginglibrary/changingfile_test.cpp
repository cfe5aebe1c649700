// Files that become others while a picture of them is open, and what broken ones print.
#include "tests/support/bmpmaker.h"
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <utility>

namespace {

using namespace imaginglibrary;
using namespace tests;

// A file whose bytes are exchanged under those who read it.
class ChangingInput : public InputFile {
  public:
    explicit ChangingInput(const std::string& bytes) : now_(std::make_unique<MemoryInput>(bytes)) {}

    void Become(const std::string& bytes) { now_ = std::make_unique<MemoryInput>(bytes); }
    void FailBehind(std::size_t end) { end_ = end; }

    std::uint64_t Size() const override { return now_->Size(); }
    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        const auto read = now_->ReadAt(offset, buffer, count);
        return offset + *read > end_ ? Status::AccessDenied : read;
    }

  private:
    std::atomic<std::uint64_t> end_ = std::numeric_limits<std::uint64_t>::max(); // of what can be read, by any thread
    std::unique_ptr<MemoryInput> now_;
};

// Opens the first file and gives back the status of reading it once it is the second.
Status StatusOfChanged(const Codec& codec, const std::string& before, const std::string& after) {
    const auto file = std::make_shared<ChangingInput>(before);
    const auto picture = codec.open(file);
    EXPECT_TRUE(picture.Ok());
    file->Become(after);
    return ReadAllRows(**picture);
}

TEST(ChangingFile, OfAnotherSizeOrFormatIsUndecodable) {
    for (const Codec* codec : {&PngCodec(), &JpegCodec(), &TiffCodec()}) {
        const auto fileOf = [&](std::uint32_t width, std::uint32_t height) {
            return BytesWritten(*codec, *MakePicture(PixelFormat::Rgb24, width, height));
        };
        EXPECT_EQ(StatusOfChanged(*codec, fileOf(20, 10), fileOf(20, 10)), Status::Ok);
        EXPECT_EQ(StatusOfChanged(*codec, fileOf(20, 10), fileOf(21, 10)), UndecodableContent);
        EXPECT_EQ(StatusOfChanged(*codec, fileOf(20, 10), fileOf(20, 11)), UndecodableContent);
        EXPECT_EQ(StatusOfChanged(*codec, fileOf(20, 10), "no picture"), UndecodableContent);
    }
    const auto pngOf = [](PixelFormat format) { return BytesWritten(PngCodec(), *MakePicture(format, 20, 10)); };
    EXPECT_EQ(StatusOfChanged(PngCodec(), pngOf(PixelFormat::Indexed8), pngOf(PixelFormat::Argb32)),
              UndecodableContent);
    EXPECT_EQ(StatusOfChanged(JpegCodec(), MakeJpeg({.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE}), MakeJpeg({})),
              UndecodableContent);
}

// A picture of noise in each format that is written, and one that BMP alone can pack, all longer than what is read at
// once.
std::vector<std::pair<const Codec*, std::string>> LongFiles() {
    const auto noise = MakePictureOf(500, 1500, [](auto x, auto y) {
        const std::uint32_t mixed = (x * 2654435761u) ^ (y * 40503u * 97u);
        return MakeColor(static_cast<std::uint8_t>(mixed >> 8), static_cast<std::uint8_t>(mixed >> 16),
                         static_cast<std::uint8_t>(mixed >> 24));
    });
    std::vector<std::pair<const Codec*, std::string>> files;
    for (const Codec* codec : {&PngCodec(), &JpegCodec(), &TiffCodec(), &GifCodec(), &BmpCodec()}) {
        files.emplace_back(codec, BytesWritten(*codec, *noise));
    }
    std::string runs;
    for (int y = 0; y < 20000; ++y) {
        runs += Bytes({200, 1, 0, 0});
    }
    files.emplace_back(&BmpCodec(), RleFile(8, 200, 20000, runs).Whole());
    return files;
}

TEST(FailingFile, StatusIsGivenBackWhereverItComes) {
    for (const auto& [codec, bytes] : LongFiles()) {
        for (const std::size_t end : {std::size_t{0}, std::size_t{40}, bytes.size() / 2, bytes.size() * 9 / 10}) {
            const auto file = std::make_shared<ChangingInput>(bytes);
            file->FailBehind(end);
            const auto opened = codec->open(file);
            EXPECT_EQ(opened.Ok() ? ReadAllRows(**opened) : opened.GetStatus(), Status::AccessDenied)
                << (codec - Codecs().data()) << ' ' << end;
        }
    }
}

TEST(FailingFile, IsNotTakenForOneThatEndsBetweenItsRows) {
    for (const auto& [codec, bytes] : LongFiles()) {
        const auto file = std::make_shared<ChangingInput>(bytes);
        const auto opened = codec->open(file);
        ASSERT_TRUE(opened.Ok());
        const auto rows = (*opened)->OpenRows();
        ASSERT_TRUE(rows.Ok());
        const PictureInfo& info = (*opened)->Info();
        std::vector<std::uint8_t> row(BytesPerRow(info.format, info.width));
        EXPECT_EQ((*rows)->ReadRow(row.data()), Status::Ok);
        file->FailBehind(0);
        Status status = Status::Ok;
        for (std::uint32_t y = 1; y < info.height && status == Status::Ok; ++y) {
            status = (*rows)->ReadRow(row.data());
        }
        EXPECT_EQ(status, Status::AccessDenied) << (codec - Codecs().data());
    }
}

// The libraries below have messages of their own.
TEST(BrokenFile, PrintsNothing) {
    for (const Codec* codec : {&PngCodec(), &JpegCodec(), &TiffCodec(), &GifCodec(), &BmpCodec()}) {
        const std::string whole = BytesWritten(*codec, *MakePicture(PixelFormat::Rgb24, 40, 30));
        testing::internal::CaptureStderr();
        for (const std::size_t length : {whole.size() / 4, whole.size() / 2, whole.size() - 5}) {
            (void)ReadAllRows(*codec, whole.substr(0, length));
        }
        for (std::size_t at = 4; at < whole.size(); at += 7) {
            std::string spoiled = whole;
            spoiled[at] = static_cast<char>(~spoiled[at]);
            const auto picture = OpenBytes(*codec, spoiled);
            if (picture.Ok() && (*picture)->Info().width < 1000 && (*picture)->Info().height < 1000) {
                (void)ReadAllRows(**picture);
            }
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
}

} // namespace
