// Peak memory of conversions that stream: it must not depend on the picture's height.
#include "imaginglibrary/operations/picturepyramid.h"
#include "imaginglibrary/operations/turn.h"
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::uint32_t Width = 10000;
constexpr std::uint32_t LowHeight = 1000;
constexpr std::uint32_t FullHeight = 10000; // 100 megapixels
constexpr long MostKibibytes = 64 * 1024;

// A picture that exists only while its rows are asked for, with the same colours at every height.
class TallPicture : public PixelSource {
  public:
    explicit TallPicture(std::uint32_t height)
        : info_{.width = Width, .height = height, .format = PixelFormat::Rgb24} {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        return std::unique_ptr<RowReader>(std::make_unique<Rows>());
    }

  private:
    class Rows : public RowReader {
      public:
        Status ReadRow(std::uint8_t* row) override {
            for (std::uint32_t x = 0; x < Width; ++x) {
                row[3 * x] = static_cast<std::uint8_t>(x / 40);
                row[3 * x + 1] = static_cast<std::uint8_t>(y_ / 4);
                row[3 * x + 2] = static_cast<std::uint8_t>((x + y_) / 79);
            }
            y_ = (y_ + 1) % LowHeight;
            return Status::Ok;
        }

      private:
        std::uint32_t y_ = 0;
    };

    PictureInfo info_;
};

struct Ending {
    int exitStatus;
    long peakKibibytes;
};

// `more` stands behind the target; null for nothing.
Ending RunCommand(const char* command, const std::filesystem::path& source, const std::filesystem::path& target,
                  const char* more = nullptr) {
    const pid_t child = fork();
    if (child == 0) {
        execl(LUMBRIX_CLI, LUMBRIX_CLI, command, source.c_str(), target.c_str(), more, nullptr);
        _exit(127);
    }
    int ending = 0;
    rusage usage{};
    wait4(child, &ending, 0, &usage);
    return {WIFEXITED(ending) ? WEXITSTATUS(ending) : -1, usage.ru_maxrss};
}

class Memory : public testing::Test {
  protected:
    // Writes the source at both heights and holds the two peaks against each other and against the limit.
    void ExpectConstant(const Codec& sourceCodec, const std::string& sourceName, const std::string& targetName) {
        ExpectConstantPeak(sourceCodec, folder_ / sourceName,
                           [&](const auto& source) { return RunCommand("convert", source, folder_ / targetName); });
    }

    // `run` gives back the Ending of a process that works on the source.
    template <class Run>
    void ExpectConstantPeak(const Codec& sourceCodec, const std::filesystem::path& source, const Run& run) {
        long peaks[2];
        const std::uint32_t heights[2] = {LowHeight, FullHeight};
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(WritePicture(sourceCodec, TallPicture(heights[i]), source), Status::Ok);
            const Ending ending = run(source);
            ASSERT_EQ(ending.exitStatus, 0);
            peaks[i] = ending.peakKibibytes;
        }
        RecordProperty("PeakKibibytes", static_cast<int>(peaks[1]));
        std::printf("peak %ld KiB at %u rows, %ld KiB at %u rows\n", peaks[0], LowHeight, peaks[1], FullHeight);
        EXPECT_LT(peaks[1], MostKibibytes);
        EXPECT_LT(peaks[1], peaks[0] + 4096) << "ten times the height, the same memory";
    }

    TemporaryFolder folder_;
};

Ending RunTurned(const std::filesystem::path& source, const std::filesystem::path& target, unsigned code) {
    const pid_t child = fork();
    if (child == 0) {
        auto picture = OpenPicture(source);
        const auto turned = picture.Ok() ? Turned(std::move(*picture), code) : picture.GetStatus();
        _exit(turned.Ok() && WritePicture(BmpCodec(), **turned, target) == Status::Ok ? 0 : 1);
    }
    int ending = 0;
    rusage usage{};
    wait4(child, &ending, 0, &usage);
    return {WIFEXITED(ending) ? WEXITSTATUS(ending) : -1, usage.ru_maxrss};
}

class MemoryOfTurns : public Memory {
  protected:
    void ExpectConstantTurn(const Codec& sourceCodec, unsigned code) {
        ExpectConstantPeak(sourceCodec, folder_ / "source",
                           [&](const auto& source) { return RunTurned(source, folder_ / "target", code); });
    }
};

TEST_F(MemoryOfTurns, MirrorIsConstant) { ExpectConstantTurn(JpegCodec(), Mirror); }
TEST_F(MemoryOfTurns, HalfTurnOfABmpIsConstant) { ExpectConstantTurn(BmpCodec(), 2); }
TEST_F(MemoryOfTurns, UpsideDownBmpIsConstant) { ExpectConstantTurn(BmpCodec(), 2 | Mirror); }

// What a 32-bit process spends on a picture that is drawn through three points, and what making its forms may take
// beside.
TEST(MemoryOfPrepared, HundredMegapixelsKeepToTheLimit) {
    constexpr long LimitMebibytes = 384;
    constexpr long BesideMebibytes =
        128; // the largest form is read at twice its size's rows, three others are made at once
    const pid_t child = fork();
    if (child == 0) {
        const auto pyramid = PicturePyramid::Make(TallPicture(FullHeight), std::size_t{LimitMebibytes} << 20);
        _exit(pyramid.Ok() && (*pyramid)->Levels()[0]->Width() > Width / 2 ? 0 : 1);
    }
    int ending = 0;
    rusage usage{};
    wait4(child, &ending, 0, &usage);
    EXPECT_TRUE(WIFEXITED(ending) && WEXITSTATUS(ending) == 0);
    std::printf("peak %ld KiB\n", usage.ru_maxrss);
    EXPECT_LT(usage.ru_maxrss, (LimitMebibytes + BesideMebibytes) * 1024);
}

// Twelve megabytes of new pixels, and little beside.
TEST_F(Memory, ResizingHoldsOnlyTheNewPicture) {
    for (const Codec* codec : {&JpegCodec(), &PngCodec()}) {
        ASSERT_EQ(WritePicture(*codec, TallPicture(FullHeight), folder_ / "source"), Status::Ok);
        const Ending ending = RunCommand("resize", folder_ / "source", folder_ / "small.jpg", "2000");
        EXPECT_EQ(ending.exitStatus, 0);
        std::printf("peak %ld KiB\n", ending.peakKibibytes);
        EXPECT_LT(ending.peakKibibytes, 28 * 1024);
    }
}

TEST_F(Memory, JpegToPngIsConstant) { ExpectConstant(JpegCodec(), "a.jpg", "b.png"); }
TEST_F(Memory, PngToJpegIsConstant) { ExpectConstant(PngCodec(), "a.png", "b.jpg"); }
TEST_F(Memory, JpegToBmpIsConstant) { ExpectConstant(JpegCodec(), "a.jpg", "b.bmp"); }
TEST_F(Memory, PngToTiffIsConstant) { ExpectConstant(PngCodec(), "a.png", "b.tiff"); }
TEST_F(Memory, JpegToGifIsConstant) { ExpectConstant(JpegCodec(), "a.jpg", "b.gif"); }

} // namespace
