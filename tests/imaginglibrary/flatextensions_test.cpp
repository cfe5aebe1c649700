// What the library offers beside the platform's functions: the mark of a damaged file, refusing it, watching a reading.
#include "imaginglibrary/flat/extensions.h"
#include "tests/support/flatdrawing.h"
#include "tests/support/jpegfiles.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;

constexpr std::uint32_t Side = 256;

GpImage* const NoImage = reinterpret_cast<GpImage*>(0x7654321);

struct Watched {
    std::vector<std::uint32_t> done;
    std::uint32_t rows = 0;
    std::uint32_t stopAt = UINT32_MAX;
    std::thread::id thread;
};

std::int32_t FLAT_CALL Note(void* context, std::uint32_t rowsDone, std::uint32_t rows) {
    auto& watched = *static_cast<Watched*>(context);
    watched.done.push_back(rowsDone);
    watched.rows = rows;
    watched.thread = std::this_thread::get_id();
    return rowsDone >= watched.stopAt ? 0 : 1;
}

class FlatExtensions : public FlatTest {
  protected:
    GpImage* LoadJpeg(double share, JpegScans scans = JpegScans::One) {
        const std::string whole = MakeJpeg({.width = Side, .height = Side, .scans = scans});
        const auto path = folder_ / ("jpeg" + std::to_string(files_++));
        WriteBytes(path, whole.substr(0, static_cast<std::size_t>(static_cast<double>(whole.size()) * share)));
        return Load(path);
    }

    Status SaveAs(GpImage* image, const std::string& name, std::size_t codec) {
        return GdipSaveImageToFile(image, (folder_ / name).u16string().c_str(), &Codecs()[codec].classId);
    }

    static std::int32_t DamageOf(GpImage* image) {
        std::int32_t isDamaged = -1;
        EXPECT_EQ(CallFlat("ImagingGetImageDamage", image, &isDamaged), Status::Ok);
        return isDamaged;
    }

    static Status Refuse(GpImage* image) { return CallFlat("ImagingRefuseImageDamage", image); }

    static Status Watch(GpImage* image, Watched* watched) {
        return CallFlat("ImagingWatchImage", image, static_cast<ImageWatcher>(watched != nullptr ? Note : nullptr),
                        static_cast<void*>(watched));
    }

    static std::vector<std::uint32_t> TagsOf(GpImage* image) {
        std::uint32_t count = 0;
        EXPECT_EQ(CallFlat("GdipGetPropertyCount", image, &count), Status::Ok);
        std::vector<std::uint32_t> tags(count);
        if (count > 0) {
            EXPECT_EQ(CallFlat("GdipGetPropertyIdList", image, count, tags.data()), Status::Ok);
        }
        return tags;
    }

    static constexpr std::size_t Bmp = 0;
    static constexpr std::size_t Gif = 2;
    static constexpr std::size_t Png = 4;
};

// Every report is larger than the one before it by a hundredth at most, and the last one is of all rows.
void ExpectOnePass(const std::vector<std::uint32_t>& done, std::uint32_t rows) {
    ASSERT_FALSE(done.empty());
    std::uint32_t before = 0;
    for (const std::uint32_t each : done) {
        EXPECT_GT(each, before);
        EXPECT_LE(each - before, (rows + 99) / 100);
        before = each;
    }
    EXPECT_EQ(before, rows);
}

TEST_F(FlatExtensions, BadHandlesAndNoPlaceForAnAnswerAreRefused) {
    GpImage* image = LoadJpeg(1);
    std::int32_t answer = 7;
    for (GpImage* bad : {static_cast<GpImage*>(nullptr), NoImage}) {
        EXPECT_EQ(CallFlat("ImagingGetImageDamage", bad, &answer), Status::InvalidParameter);
        EXPECT_EQ(Refuse(bad), Status::InvalidParameter);
        EXPECT_EQ(Watch(bad, nullptr), Status::InvalidParameter);
    }
    EXPECT_EQ(CallFlat("ImagingGetImageDamage", image, static_cast<std::int32_t*>(nullptr)), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingCarryMetadata", image, NoImage), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingCarryMetadata", NoImage, image), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingFitMetadata", NoImage), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingClearOrientation", NoImage), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingStripMetadata", NoImage, std::int32_t{0}), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("ImagingLayOverColor", NoImage, std::uint32_t{0}), Status::InvalidParameter);
    EXPECT_EQ(answer, 7);
}

TEST_F(FlatExtensions, OrientationIsClearedAndTheRestStays) {
    GpImage* image = NewBitmap(5, 5);
    ASSERT_EQ(SetProperty(image, imaginglibrary::ShortProperty(0x0112, 6)), Status::Ok);
    ASSERT_EQ(SetProperty(image, imaginglibrary::ShortProperty(0x8827, 100)), Status::Ok);
    EXPECT_EQ(CallFlat("ImagingClearOrientation", image), Status::Ok);
    EXPECT_EQ(TagsOf(image), std::vector<std::uint32_t>{0x8827});
}

TEST_F(FlatExtensions, StrippingLeavesTheProfileWhereThatIsWanted) {
    GpImage* image = NewBitmap(5, 5);
    ASSERT_EQ(SetProperty(image, imaginglibrary::ShortProperty(0x8827, 100)), Status::Ok);
    ASSERT_EQ(SetProperty(image, {0x8773, imaginglibrary::PropertyType::Byte, {1, 2, 3}}), Status::Ok);
    EXPECT_EQ(CallFlat("ImagingStripMetadata", image, std::int32_t{1}), Status::Ok);
    EXPECT_EQ(TagsOf(image), std::vector<std::uint32_t>{0x8773});
    EXPECT_EQ(CallFlat("ImagingStripMetadata", image, std::int32_t{0}), Status::Ok);
    EXPECT_EQ(TagsOf(image), std::vector<std::uint32_t>{});
}

TEST_F(FlatExtensions, PictureIsLaidOverAColorAndOneThatIsOpaqueStays) {
    GpImage* image = NewBitmap(2, 1);
    EXPECT_EQ(CallFlat("ImagingLayOverColor", image, std::uint32_t{0x00102030}), Status::Ok);
    ASSERT_EQ(SaveAs(image, "over.png", Png), Status::Ok);
    EXPECT_EQ(ColorsOf(**OpenPicture(folder_ / "over.png")), (std::vector<Color>{0xFF102030, 0xFF102030}));
    GpImage* opaque = ImageOf(*MakePicture(PixelFormat::Indexed8, 4, 3));
    ASSERT_EQ(CallFlat("ImagingLayOverColor", opaque, std::uint32_t{0xFF102030}), Status::Ok);
    PixelFormat format{};
    EXPECT_EQ(CallFlat("GdipGetImagePixelFormat", opaque, &format), Status::Ok);
    EXPECT_EQ(format, PixelFormat::Indexed8);
}

TEST_F(FlatExtensions, DamageIsKnownOnceItWasDecoded) {
    GpImage* image = LoadJpeg(0.5);
    EXPECT_EQ(DamageOf(image), 0);
    EXPECT_EQ(SaveAs(image, "shown.png", Png), Status::Ok);
    EXPECT_EQ(DamageOf(image), 1);
}

TEST_F(FlatExtensions, WholeFilesAndOtherFormatsAreNeverMarked) {
    for (GpImage* image : {LoadJpeg(1), LoadJpeg(1, JpegScans::Progressive),
                           ImageOf(*MakePicture(PixelFormat::Rgb24, 20, 10)), NewBitmap(5, 5)}) {
        EXPECT_EQ(SaveAs(image, "shown.png", Png), Status::Ok);
        EXPECT_EQ(DamageOf(image), 0);
        EXPECT_EQ(Refuse(image), Status::Ok);
        EXPECT_EQ(SaveAs(image, "again.png", Png), Status::Ok);
    }
}

TEST_F(FlatExtensions, ImagesMadeFromADamagedOneShareItsMark) {
    GpImage* image = LoadJpeg(0.5);
    GpImage* clone = nullptr;
    GpImage* part = nullptr;
    GpImage* thumbnail = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    ASSERT_EQ(CloneArea(0, 200, 10, 10, PixelFormat::Undefined, image, &part), Status::Ok);
    EXPECT_EQ(DamageOf(part), 0);
    EXPECT_EQ(GdipGetImageThumbnail(image, 16, 16, &thumbnail), Status::Ok);
    for (GpImage* each : {image, clone, part, thumbnail}) {
        EXPECT_EQ(DamageOf(each), 1);
    }
    ASSERT_EQ(RotateFlip(image, 1), Status::Ok);
    EXPECT_EQ(DamageOf(image), 1);
}

TEST_F(FlatExtensions, PartThatEndsAboveTheDamageMeetsNone) {
    GpImage* image = LoadJpeg(0.5);
    GpImage* part = nullptr;
    ASSERT_EQ(CloneArea(0, 0, 10, 10, PixelFormat::Undefined, image, &part), Status::Ok);
    EXPECT_EQ(Refuse(part), Status::Ok);
    EXPECT_EQ(SaveAs(part, "part.png", Png), Status::Ok);
    EXPECT_EQ(DamageOf(image), 0);
}

TEST_F(FlatExtensions, RefusedDamageIsUndecodableAndNothingIsWritten) {
    WriteBytes(folder_ / "old.png", "old");
    for (const JpegScans scans : {JpegScans::One, JpegScans::Progressive}) {
        GpImage* image = LoadJpeg(0.5, scans);
        GpGraphics* graphics = NewGraphics(NewBitmap(20, 20));
        EXPECT_EQ(Refuse(image), Status::Ok);
        EXPECT_EQ(SaveAs(image, "old.png", Png), Status::OutOfMemory);
        EXPECT_EQ(ReadBytes(folder_ / "old.png"), "old");
        EXPECT_EQ(DrawImageRect(graphics, image, 0, 0, 20, 20), Status::OutOfMemory);
        EXPECT_EQ(DamageOf(image), 1);
    }
}

TEST_F(FlatExtensions, RefusalHoldsForWhatIsInMemoryAlready) {
    GpImage* drawnOn = LoadJpeg(0.5);
    ASSERT_EQ(DrawImageRect(NewGraphics(drawnOn), NewBitmap(4, 4), 0, 0, 4, 4), Status::Ok);
    GpImage* thumbnail = nullptr;
    ASSERT_EQ(GdipGetImageThumbnail(drawnOn, 16, 16, &thumbnail), Status::Ok);
    EXPECT_EQ(SaveAs(drawnOn, "a.png", Png), Status::Ok);
    EXPECT_EQ(Refuse(drawnOn), Status::Ok);
    EXPECT_EQ(SaveAs(drawnOn, "a.png", Png), Status::OutOfMemory);
    EXPECT_EQ(SaveAs(thumbnail, "b.png", Png), Status::OutOfMemory);
    EXPECT_EQ(GdipGetImageThumbnail(drawnOn, 16, 16, &thumbnail), Status::OutOfMemory);
}

TEST_F(FlatExtensions, WatcherIsToldOfASave) {
    for (const std::uint32_t height : {1u, 7u, 99u, 100u, 101u, 1000u}) {
        Watched watched;
        GpImage* image = ImageOf(*MakePicture(PixelFormat::Rgb24, 4, height));
        ASSERT_EQ(Watch(image, &watched), Status::Ok);
        EXPECT_EQ(SaveAs(image, "out.bmp", Bmp), Status::Ok);
        ExpectOnePass(watched.done, height);
        EXPECT_EQ(watched.rows, height);
        EXPECT_EQ(watched.thread, std::this_thread::get_id());
    }
}

TEST_F(FlatExtensions, WatcherIsToldOfADrawAndOfBeingDrawnOn) {
    GpImage* image = LoadJpeg(1);
    Watched watched;
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    ASSERT_EQ(DrawImage(NewGraphics(NewBitmap(300, 300)), image, 0, 0), Status::Ok);
    ExpectOnePass(watched.done, Side);
    watched.done.clear();
    ASSERT_EQ(DrawImageRect(NewGraphics(image), NewBitmap(4, 4), 0, 0, 4, 4), Status::Ok);
    ExpectOnePass(watched.done, Side);
}

TEST_F(FlatExtensions, RowsOfAReducedFormCountAsThePictures) {
    GpImage* image = LoadJpeg(1);
    GpImage* thumbnail = nullptr;
    Watched watched;
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    ASSERT_EQ(GdipGetImageThumbnail(image, 32, 32, &thumbnail), Status::Ok);
    EXPECT_EQ(watched.rows, Side);
    EXPECT_EQ(watched.done.size(), 32u) << "an eighth of the rows is read";
    EXPECT_EQ(watched.done.front(), 8u);
    EXPECT_EQ(watched.done.back(), Side);
}

TEST_F(FlatExtensions, SecondReadingStartsAgain) {
    GpImage* image = LoadJpeg(1);
    Watched watched;
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    ASSERT_EQ(SaveAs(image, "out.gif", Gif), Status::Ok);
    const auto firstEnd = std::find(watched.done.begin(), watched.done.end(), Side) + 1;
    ExpectOnePass({watched.done.begin(), firstEnd}, Side);
    ExpectOnePass({firstEnd, watched.done.end()}, Side);
}

TEST_F(FlatExtensions, WatcherStopsASaveAndTheTargetStays) {
    WriteBytes(folder_ / "old.png", "old");
    GpImage* image = LoadJpeg(1);
    for (const std::uint32_t row : {1u, 100u, Side}) {
        Watched watched{.stopAt = row};
        ASSERT_EQ(Watch(image, &watched), Status::Ok);
        EXPECT_EQ(SaveAs(image, "old.png", Png), Status::Aborted);
        EXPECT_EQ(ReadBytes(folder_ / "old.png"), "old");
        EXPECT_LE(watched.done.back(), row + 2) << "nothing is read behind the stop";
    }
}

TEST_F(FlatExtensions, WatcherStopsADrawAndAThumbnail) {
    GpImage* image = LoadJpeg(1);
    GpImage* thumbnail = nullptr;
    Watched watched{.stopAt = 20};
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    EXPECT_EQ(DrawImageRect(NewGraphics(NewBitmap(90, 90)), image, 0, 0, 90, 90), Status::Aborted);
    EXPECT_EQ(GdipGetImageThumbnail(image, 32, 32, &thumbnail), Status::Aborted);
    EXPECT_EQ(DrawImageRect(NewGraphics(image), NewBitmap(4, 4), 0, 0, 4, 4), Status::Aborted);
}

TEST_F(FlatExtensions, TurnIsReadAndWatchedWhenItsPixelsAreNeeded) {
    GpImage* image = LoadJpeg(1);
    Watched watched;
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    ASSERT_EQ(RotateFlip(image, 1), Status::Ok);
    EXPECT_TRUE(watched.done.empty());
    ASSERT_EQ(SaveAs(image, "turned.png", Png), Status::Ok);
    const auto firstEnd = std::find(watched.done.begin(), watched.done.end(), Side) + 1;
    ExpectOnePass({watched.done.begin(), firstEnd}, Side);
    ExpectOnePass({firstEnd, watched.done.end()}, Side);
}

TEST_F(FlatExtensions, WatcherStopsATurnWhileTheSourceIsRead) {
    GpImage* image = LoadJpeg(1);
    GpImage* part = nullptr;
    Watched watched{.stopAt = 100};
    ASSERT_EQ(RotateFlip(image, 3), Status::Ok);
    ASSERT_EQ(CloneArea(0, 0, 20, 20, PixelFormat::Argb32, image, &part), Status::Ok);
    for (GpImage* each : {image, part}) {
        ASSERT_EQ(Watch(each, &watched), Status::Ok);
        EXPECT_EQ(SaveAs(each, "turned.png", Png), Status::Aborted);
        EXPECT_LE(watched.done.back(), 102u);
    }
}

TEST_F(FlatExtensions, DamageBehindATurnIsMetWhenItsPixelsAreNeeded) {
    GpImage* image = LoadJpeg(0.5);
    ASSERT_EQ(RotateFlip(image, 1), Status::Ok);
    EXPECT_EQ(DamageOf(image), 0);
    ASSERT_EQ(SaveAs(image, "turned.png", Png), Status::Ok);
    EXPECT_EQ(DamageOf(image), 1);
}

TEST_F(FlatExtensions, WatchEndsWhenItIsTakenBack) {
    GpImage* image = LoadJpeg(1);
    Watched watched{.stopAt = 1};
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    ASSERT_EQ(Watch(image, nullptr), Status::Ok);
    EXPECT_EQ(SaveAs(image, "out.png", Png), Status::Ok);
    EXPECT_TRUE(watched.done.empty());
}

TEST_F(FlatExtensions, WatchDoesNotGoOverToAClone) {
    GpImage* image = LoadJpeg(1);
    Watched watched{.stopAt = 1};
    ASSERT_EQ(Watch(image, &watched), Status::Ok);
    GpImage* clone = nullptr;
    GpImage* part = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    ASSERT_EQ(CloneArea(0, 0, 10, 10, PixelFormat::Undefined, image, &part), Status::Ok);
    EXPECT_EQ(SaveAs(clone, "clone.png", Png), Status::Ok);
    EXPECT_EQ(SaveAs(part, "part.png", Png), Status::Ok);
    EXPECT_TRUE(watched.done.empty());
}

struct Asking {
    GpImage* target;
    GpGraphics* graphics;
    std::uint32_t width = 0;
};

std::int32_t FLAT_CALL AskBack(void* context, std::uint32_t /*rowsDone*/, std::uint32_t /*rows*/) {
    auto& asking = *static_cast<Asking*>(context);
    std::uint32_t state = 0;
    EXPECT_EQ(GdipGetImageWidth(asking.target, &asking.width), Status::Ok);
    EXPECT_EQ(CallFlat("GdipSaveGraphics", asking.graphics, &state), Status::Ok);
    return 1;
}

TEST_F(FlatExtensions, WatcherMayCallTheLibrary) {
    GpImage* image = LoadJpeg(1);
    GpImage* target = NewBitmap(30, 30);
    Asking asking{target, NewGraphics(target)};
    ASSERT_EQ(CallFlat("ImagingWatchImage", image, static_cast<ImageWatcher>(AskBack), static_cast<void*>(&asking)),
              Status::Ok);
    EXPECT_EQ(DrawImageRect(asking.graphics, image, 0, 0, 30, 30), Status::Ok);
    EXPECT_EQ(asking.width, 30u);
    asking = {image, asking.graphics};
    EXPECT_EQ(DrawImageRect(NewGraphics(image), target, 0, 0, 30, 30), Status::Ok);
    EXPECT_EQ(asking.width, Side);
}

std::int32_t FLAT_CALL Dispose(void* context, std::uint32_t /*rowsDone*/, std::uint32_t /*rows*/) {
    auto& handles = *static_cast<std::vector<GpImage*>*>(context);
    EXPECT_EQ(GdipDisposeImage(handles.back()), Status::Ok);
    handles.push_back(nullptr);
    return 1;
}

TEST_F(FlatExtensions, DisposedImageIsWatchedNoMore) {
    std::vector<GpImage*> handles{LoadJpeg(1)};
    GpImage* const image = handles[0];
    ASSERT_EQ(CallFlat("ImagingWatchImage", image, static_cast<ImageWatcher>(Dispose), static_cast<void*>(&handles)),
              Status::Ok);
    EXPECT_EQ(SaveAs(image, "out.png", Png), Status::Ok);
    EXPECT_EQ(handles.size(), 2u);
}

} // namespace
