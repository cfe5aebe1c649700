// Files that become others while a picture of them is open, and what broken ones print.
#include "tests/support/codecs.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace imaginglibrary;
using namespace tests;

// A file whose bytes are exchanged under those who read it.
class ChangingInput : public InputFile {
  public:
    explicit ChangingInput(const std::string& bytes) : now_(std::make_unique<MemoryInput>(bytes)) {}

    void Become(const std::string& bytes) { now_ = std::make_unique<MemoryInput>(bytes); }

    std::uint64_t Size() const override { return now_->Size(); }
    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        return now_->ReadAt(offset, buffer, count);
    }

  private:
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
