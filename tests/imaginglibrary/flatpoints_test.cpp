// Drawing through three points by the flat interface: what is kept with the image, and until when.
#include "imaginglibrary/flat/extensions.h"
#include "tests/support/flatdrawing.h"
#include "tests/support/jpegfiles.h"

#include <fstream>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;

// Tells how many rows were read of the image that it watches.
std::int32_t FLAT_CALL CountReading(void* context, std::uint32_t /*rowsDone*/, std::uint32_t /*rows*/) {
    ++*static_cast<int*>(context);
    return 1;
}

std::int32_t FLAT_CALL StopReading(void* /*context*/, std::uint32_t /*rowsDone*/, std::uint32_t /*rows*/) { return 0; }

class FlatPoints : public FlatTest {
  protected:
    static void WatchWith(GpImage* image, ImageWatcher watcher, int* tidings) {
        EXPECT_EQ(CallFlat("ImagingWatchImage", image, watcher, static_cast<void*>(tidings)), Status::Ok);
    }

    // The image on white, by way of its corners.
    std::vector<Color> Seen(GpImage* image, const std::vector<FlatPoint>& points, Status expected = Status::Ok) {
        GpImage* const surface = NewBitmap(60, 60);
        GpGraphics* const graphics = NewGraphics(surface);
        EXPECT_EQ(DrawImageRect(graphics, white_, 0, 0, 60, 60), Status::Ok);
        EXPECT_EQ(SetInterpolation(graphics, 4), Status::Ok);
        EXPECT_EQ(DrawImagePoints(graphics, image, points), expected);
        EXPECT_EQ(CallFlat("GdipDeleteGraphics", graphics), Status::Ok);
        auto pixels = PixelsOf(surface);
        EXPECT_EQ(GdipDisposeImage(surface), Status::Ok);
        return pixels;
    }

    void SetUp() override {
        FlatTest::SetUp();
        white_ = ImageOf(*WhitePicture(1, 1));
    }

    const std::vector<FlatPoint> upright_{{4, 4}, {44, 4}, {4, 34}};
    const std::vector<FlatPoint> slanted_{{4, 14}, {44, 4}, {14, 44}};
    GpImage* white_ = nullptr;
};

TEST_F(FlatPoints, PictureIsReadForTheFirstDrawingOnly) {
    for (const std::size_t codec : {0u, 1u, 4u}) {
        GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 40, 30), Codecs()[codec]);
        int tidings = 0;
        WatchWith(image, CountReading, &tidings);
        const auto first = Seen(image, upright_);
        EXPECT_GT(tidings, 0);
        tidings = 0;
        EXPECT_EQ(Seen(image, upright_), first);
        Seen(image, slanted_);
        Seen(image, {{0, 0}, {7, 3}, {-2, 5}});
        EXPECT_EQ(tidings, 0);
    }
}

TEST_F(FlatPoints, LaterDrawingsNeedNoFile) {
    const auto path = folder_ / "picture.jpg";
    ASSERT_EQ(WritePicture(Codecs()[1], *MakePicture(PixelFormat::Rgb24, 40, 30), path), Status::Ok);
    GpImage* const image = Load(path);
    const auto before = Seen(image, slanted_);
#if !defined(_WIN32) // where the file cannot be changed while it is open
    std::ofstream(path, std::ios::trunc) << "gone";
#endif
    EXPECT_EQ(Seen(image, slanted_), before);
    EXPECT_NE(Seen(image, upright_), before);
}

#if defined(__linux__)
// How many readings and writings of files the kernel has done for this process.
std::uint64_t FileCalls() {
    std::ifstream counts("/proc/self/io");
    std::uint64_t sum = 0;
    std::string name;
    for (std::uint64_t count = 0; counts >> name >> count;) {
        sum += name == "syscr:" || name == "syscw:" ? count : 0;
    }
    return sum;
}

TEST_F(FlatPoints, LaterDrawingsCallForNoFile) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 400, 300), Codecs()[1]);
    GpGraphics* const graphics = NewGraphics(NewBitmap(300, 300));
    EXPECT_EQ(DrawImagePoints(graphics, image, {{0, 0}, {300, 0}, {0, 200}}), Status::Ok);
    FileCalls(); // the first counting reads more than later ones
    const std::uint64_t before = FileCalls();
    const std::uint64_t start = FileCalls();
    for (std::int32_t i = 0; i < 50; ++i) {
        EXPECT_EQ(DrawImagePoints(graphics, image, {{i, 0}, {300 - i, i}, {0, 10 + 4 * i}}), Status::Ok);
    }
    EXPECT_GT(start, before); // so counting works
    EXPECT_EQ(FileCalls() - start, start - before);
}
#endif

TEST_F(FlatPoints, PaintedImageIsDrawnAsItIsNow) {
    GpImage* const image = ImageOf(*MakePictureOf(40, 30, [](auto, auto) { return Blue; }));
    EXPECT_EQ(Seen(image, upright_)[20 * 60 + 20], Blue);
    GpGraphics* const graphics = NewGraphics(image);
    for (const Color color : {Red, Green}) { // in a bitmap that is made for it, and then in place
        GpImage* const paint = ImageOf(*MakePictureOf(40, 30, [&](auto, auto) { return color; }));
        EXPECT_EQ(DrawImage(graphics, paint, 0, 0), Status::Ok);
        EXPECT_EQ(Seen(image, upright_)[20 * 60 + 20], color);
    }
}

TEST_F(FlatPoints, TurnedImageIsDrawnAsItIsNow) {
    GpImage* const image = ImageOf(*MakePictureOf(40, 30, [](auto x, auto) { return x < 20 ? Blue : Red; }));
    EXPECT_EQ(Seen(image, upright_)[20 * 60 + 8], Blue);
    EXPECT_EQ(RotateFlip(image, 4), Status::Ok);
    EXPECT_EQ(Seen(image, upright_)[20 * 60 + 8], Red);
    EXPECT_EQ(RotateFlip(image, 1), Status::Ok);
    const auto turned = Seen(image, upright_);
    EXPECT_EQ(turned[8 * 60 + 20], Red);
    EXPECT_EQ(turned[30 * 60 + 20], Blue);
}

TEST_F(FlatPoints, CloneHasAPictureOfItsOwn) {
    GpImage* const image = ImageOf(*MakePictureOf(40, 30, [](auto, auto) { return Blue; }));
    Seen(image, upright_);
    GpImage* clone = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    Seen(clone, upright_);
    GpImage* const paint = ImageOf(*MakePictureOf(40, 30, [](auto, auto) { return Red; }));
    EXPECT_EQ(DrawImage(NewGraphics(clone), paint, 0, 0), Status::Ok);
    EXPECT_EQ(Seen(image, upright_)[20 * 60 + 20], Blue);
    EXPECT_EQ(Seen(clone, upright_)[20 * 60 + 20], Red);
}

TEST_F(FlatPoints, ImageCanBeDrawnOnItself) {
    GpImage* const image = ImageOf(*MakePictureOf(40, 40, [](auto x, auto) { return x < 20 ? Blue : Red; }));
    EXPECT_EQ(DrawImagePoints(NewGraphics(image), image, {{20, 0}, {60, 0}, {20, 40}}), Status::Ok);
    const auto pixels = PixelsOf(image);
    EXPECT_EQ(pixels[5 * 40 + 10], Blue);
    EXPECT_EQ(pixels[5 * 40 + 30], Blue);
}

TEST_F(FlatPoints, UndecodablePictureFailsEachTimeAndIsReadOnce) {
    const auto path = folder_ / "cut.bmp";
    ASSERT_EQ(WritePicture(Codecs()[0], *MakePicture(PixelFormat::Rgb24, 40, 40), path), Status::Ok);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 1000);
    GpImage* const image = Load(path);
    int tidings = 0;
    WatchWith(image, CountReading, &tidings);
    const std::vector<Color> white(60 * 60, White);
    EXPECT_EQ(Seen(image, {{60, 0}, {90, 0}, {60, 30}}), white) << "beside the surface";
    EXPECT_EQ(tidings, 0);
    EXPECT_EQ(Seen(image, upright_, UndecodableContent), white);
    tidings = 0;
    EXPECT_EQ(Seen(image, slanted_, UndecodableContent), white);
    EXPECT_EQ(tidings, 0);
}

TEST_F(FlatPoints, ReadingThatWasStoppedIsBegunAnew) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 40, 30));
    WatchWith(image, StopReading, nullptr);
    Seen(image, upright_, Status::Aborted);
    WatchWith(image, nullptr, nullptr);
    EXPECT_NE(Seen(image, upright_), std::vector<Color>(60 * 60, White));
}

TEST_F(FlatPoints, DamagedJpegIsDrawnAsFarAsItGoesUnlessThatIsRefused) {
    const std::string whole = MakeJpeg({.width = 64, .height = 64});
    const auto path = folder_ / "cut.jpg";
    std::ofstream(path, std::ios::binary) << whole.substr(0, whole.size() / 2);
    GpImage* const image = Load(path);
    const auto seen = Seen(image, {{0, 0}, {60, 0}, {0, 60}});
    EXPECT_EQ(seen[58 * 60 + 30], MakeColor(128, 128, 128));
    EXPECT_NE(seen[5 * 60 + 30], MakeColor(128, 128, 128));
    std::int32_t isDamaged = 0;
    EXPECT_EQ(CallFlat("ImagingGetImageDamage", image, &isDamaged), Status::Ok);
    EXPECT_EQ(isDamaged, 1);
    EXPECT_EQ(CallFlat("ImagingRefuseImageDamage", image), Status::Ok);
    Seen(image, upright_, UndecodableContent);
}

TEST_F(FlatPoints, PointsOnALineDrawNothing) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 40, 30));
    const std::vector<Color> white(60 * 60, White);
    EXPECT_EQ(Seen(image, {{7, 7}, {7, 7}, {7, 7}}), white);
    EXPECT_EQ(Seen(image, {{0, 0}, {30, 30}, {10, 10}}), white);
    EXPECT_EQ(Seen(image, {{0, 0}, {50, 0}, {20, 0}}), white);
    EXPECT_EQ(Seen(image, {{0, 0}, {0, 50}, {0, -20}}), white);
}

TEST_F(FlatPoints, FarPointsAreNoFailure) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 40, 30));
    const std::vector<Color> white(60 * 60, White);
    EXPECT_EQ(Seen(image, {{65536, 10}, {65600, 10}, {65536, 90}}), white);
    EXPECT_EQ(Seen(image, {{-1000000000, 0}, {-999999999, 0}, {-1000000000, 9}}), white);
    const auto inside = Seen(image, {{-900000000, -900000000}, {900000000, -900000000}, {-900000000, 900000000}});
    EXPECT_EQ(std::count(inside.begin(), inside.end(), White), 0);
    Seen(image, {{INT32_MIN, 0}, {10, 0}, {0, 10}}, Status::ValueOverflow);
}

TEST_F(FlatPoints, InkAndGreyFilesAreDrawnInTheirColors) {
    const auto seenOf = [&](const JpegFile& file, std::uint8_t sample) {
        const auto path = folder_ / ("kind" + std::to_string(files_++));
        std::ofstream(path, std::ios::binary) << MakeJpeg(file, [&](unsigned, unsigned, int) { return sample; });
        return Seen(Load(path), upright_)[20 * 60 + 20];
    };
    const Color grey = seenOf({.width = 40, .height = 30, .given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE}, 77);
    EXPECT_EQ(grey, MakeColor(77, 77, 77));
    // A stored ink of 100 leaves 155 of 255 of the paper bare, and black as much of that.
    const Color ink = seenOf({.width = 40, .height = 30, .given = JCS_CMYK, .stored = JCS_CMYK}, 100);
    EXPECT_LE(GreatestDifference({ink}, {MakeColor(94, 94, 94)}), 1);
}

} // namespace
