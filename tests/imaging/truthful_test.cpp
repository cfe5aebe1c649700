// The operations as they tell the truth: what they call, what they report and where they end, over the fake imaging
// library.
#include "imaging/annotate.h"
#include "imaging/convert.h"
#include "imaging/crop.h"
#include "imaging/datestamp.h"
#include "imaging/dimensions.h"
#include "imaging/properties.h"
#include "imaging/resize.h"
#include "imaging/rotate.h"
#include "imaging/thumbnail.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

constexpr std::int32_t Indexed8Format = 0x30803;

using Operation = std::function<Outcome(const Wishes&)>;

Annotation Hello() {
    Annotation annotation;
    annotation.text = "Hello";
    annotation.fontName = "Arial";
    annotation.fontSize = 10;
    return annotation;
}

// Every operation that writes a file, from "a.png" to "b.png".
const std::pair<const char*, Operation> WritingOperations[] = {
    {"convert",
     [](const Wishes& wishes) {
         return Convert({"a.png", "b.png", "image/jpeg"}, wishes);
     }},
    {"thumb",
     [](const Wishes& wishes) {
         return MakeThumbnail({"a.png", "b.png", "image/jpeg"}, 10, wishes);
     }},
    {"resize",
     [](const Wishes& wishes) {
         return Resize({"a.png", "b.png", "image/jpeg", {.height = 10}}, wishes);
     }},
    {"crop",
     [](const Wishes& wishes) {
         return Crop({"a.png", "b.png", "image/jpeg", 0, 0, 5, 5}, wishes);
     }},
    {"rotate",
     [](const Wishes& wishes) {
         return Rotate({"a.png", "b.png", "image/jpeg", 90, ""}, wishes);
     }},
    {"annotate",
     [](const Wishes& wishes) {
         return Annotate({"a.png", "b.png", "image/jpeg", Hello()}, wishes);
     }},
    {"stamp",
     [](const Wishes& wishes) {
         return Stamp({"a.png", "b.png", "image/jpeg", 1, 2, "s.png"}, wishes);
     }},
    {"date",
     [](const Wishes& wishes) {
         return StampDate({"a.png", "b.png", "today"}, wishes);
     }},
};

std::tuple<Step, StatusValue> End(const Outcome& outcome) {
    EXPECT_EQ(outcome.first.step, outcome.end.step);
    EXPECT_EQ(outcome.first.status, outcome.end.status);
    return {outcome.end.step, outcome.end.status};
}

class Truthful : public tests::WithFake {
  protected:
    std::size_t CountOfAll(const std::string& function) const {
        const Calls calls = fake_.Calls();
        return static_cast<std::size_t>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
            return call.substr(0, call.find(' ')) == function;
        }));
    }

    // That every session that was opened is ended, and every image disposed of.
    void ExpectNothingLeftOpen(const char* what) const {
        EXPECT_EQ(CountOfAll("GdiplusShutdown"), CountOfAll("GdiplusStartup")) << what;
        EXPECT_EQ(fake_.Calls().back().substr(0, 15), "GdiplusShutdown") << what;
    }
};

TEST_F(Truthful, EachOperationOpensItsSourceOnceAndWritesOnce) {
    for (const auto& [name, operate] : WritingOperations) {
        const std::size_t loads = CountOfAll("GdipLoadImageFromFile");
        const std::size_t saves = CountOfAll("GdipSaveImageToFile");
        const Outcome outcome = operate({});
        EXPECT_EQ(End(outcome), std::tuple(Step::None, Done)) << name;
        EXPECT_TRUE(outcome.isWritten) << name;
        EXPECT_FALSE(outcome.isDamaged) << name;
        const std::size_t inputs = name == std::string("stamp") ? 2 : 1;
        EXPECT_EQ(CountOfAll("GdipLoadImageFromFile") - loads, inputs) << name;
        EXPECT_EQ(CountOfAll("GdipSaveImageToFile") - saves, 1u) << name;
        ExpectNothingLeftOpen(name);
    }
    EXPECT_EQ(CountOfAll("GdipDisposeImage"), 8 + 1 + 1 + 1 + 1 + 1 + 1u) << "sources, a stamp, copies";
}

TEST_F(Truthful, SizesAreReported) {
    const auto sizesOf = [](const Outcome& outcome) {
        return std::tuple(outcome.source.width, outcome.source.height, outcome.result.width, outcome.result.height);
    };
    EXPECT_EQ(sizesOf(Convert({"a", "b", "image/bmp"}, {})), std::tuple(30, 20, 30, 20));
    EXPECT_EQ(sizesOf(MakeThumbnail({"a", "b", "image/bmp"}, 10, {})), std::tuple(30, 20, 15, 10));
    EXPECT_EQ(sizesOf(Resize({"a", "b", "image/bmp", {.height = 40}}, {})), std::tuple(30, 20, 60, 40));
    EXPECT_EQ(sizesOf(Crop({"a", "b", "image/bmp", 1, 2, 3, 4}, {})), std::tuple(30, 20, 3, 4));
    EXPECT_EQ(sizesOf(Rotate({"a", "b", "image/bmp", 90, ""}, {})), std::tuple(30, 20, 20, 30));
    EXPECT_EQ(sizesOf(Rotate({"a", "b", "image/bmp", 180, "H"}, {})), std::tuple(30, 20, 30, 20));
    EXPECT_EQ(sizesOf(Annotate({"a", "b", "image/bmp", Hello()}, {})), std::tuple(30, 20, 30, 20));
    EXPECT_EQ(sizesOf(ReadSize("a", {})), std::tuple(30, 20, 0, 0));
}

TEST_F(Truthful, MissingSourceEndsEachAndNothingIsLeftOpen) {
    for (const auto& [name, operate] : WritingOperations) {
        fake_.Answer("GdipLoadImageFromFile", 10);
        EXPECT_EQ(End(operate({})), std::tuple(Step::Load, FileNotFound)) << name;
        ExpectNothingLeftOpen(name);
    }
    EXPECT_EQ(CountOfAll("GdipSaveImageToFile"), 0u);
    EXPECT_EQ(CountOfAll("GdipDeleteFont"), 1u);
}

TEST_F(Truthful, SourceThatGivesNoImageIsNotLoaded) {
    fake_.GiveHandles(0, 0);
    for (const auto& [name, operate] : WritingOperations) {
        EXPECT_EQ(End(operate({})), std::tuple(Step::Load, NotLoaded)) << name;
        ExpectNothingLeftOpen(name);
    }
}

TEST_F(Truthful, FailingSaveIsTold) {
    for (const auto& [name, operate] : WritingOperations) {
        fake_.Answer("GdipSaveImageToFile", 7);
        const Outcome outcome = operate({});
        EXPECT_EQ(End(outcome), std::tuple(Step::Save, Win32Error)) << name;
        EXPECT_FALSE(outcome.isWritten) << name;
        ExpectNothingLeftOpen(name);
    }
}

TEST_F(Truthful, RefusedSessionEndsEach) {
    for (const auto& [name, operate] : WritingOperations) {
        fake_.Answer("GdiplusStartup", 17);
        EXPECT_EQ(End(operate({})), std::tuple(Step::Session, NoSession)) << name;
        EXPECT_EQ(CountOfAll("GdipLoadImageFromFile"), 0u) << name;
    }
}

TEST_F(Truthful, LackOfMemoryIsToldWhereItEndsTheStart) {
    fake_.Answer("GdipGetImageEncoders", 3);
    EXPECT_EQ(End(Convert({"a", "b", "image/png"}, {})), std::tuple(Step::Encoder, OutOfMemory));
    fake_.Answer("GdiplusStartup", 3);
    EXPECT_EQ(End(Convert({"a", "b", "image/png"}, {})), std::tuple(Step::Session, OutOfMemory));
}

TEST_F(Truthful, FormatWithoutAnEncoderIsTold) {
    EXPECT_EQ(End(Convert({"a", "b", "image/x-icon"}, {})), std::tuple(Step::Encoder, NoEncoder));
    EXPECT_EQ(End(Resize({"a", "b", "image/x-icon", {.height = 10}}, {})), std::tuple(Step::Encoder, NoEncoder));
    EXPECT_EQ(End(Rotate({"a", "b", "image/x-icon", 90, ""}, {})), std::tuple(Step::Encoder, NoEncoder));
    EXPECT_EQ(CountOfAll("GdipSaveImageToFile"), 0u);
    ExpectNothingLeftOpen("all");
}

TEST(TruthfulUnloaded, EachTellsThatThereIsNoLibrary) {
    for (const auto& [name, operate] : WritingOperations) {
        EXPECT_EQ(End(operate({})), std::tuple(Step::Session, NoLibrary)) << name;
    }
    std::string text;
    EXPECT_EQ(End(ReadSize("a", {})), std::tuple(Step::Session, NoLibrary));
    EXPECT_EQ(End(ReadDate("a", text, {})), std::tuple(Step::Session, NoLibrary));
    EXPECT_EQ(End(ListProperties("a", text, {})), std::tuple(Step::Session, NoLibrary));
}

TEST_F(Truthful, NamesThatAreNoneMakeNoCall) {
    std::string text;
    for (const Outcome& outcome :
         {Convert({" ", "b", "image/bmp"}, {}), Convert({"a", " ", "image/bmp"}, {}), Convert({"a", "b", ""}, {}),
          MakeThumbnail({"a", "b", ""}, 10, {}), Resize({"a", "b", "", {.height = 10}}, {}),
          Crop({"a", "b", "", 0, 0, 1, 1}, {}), Rotate({"a", "b", "", 90, ""}, {}),
          Annotate({"a", "b", "", Hello()}, {}), Stamp({"a", "b", "", 0, 0, "s"}, {}), StampDate({" ", "b", "x"}, {}),
          StampDate({"a", " ", "x"}, {}), ReadSize(" ", {}), ReadDate(" ", text, {}), ListProperties(" ", text, {})}) {
        EXPECT_EQ(End(outcome), std::tuple(Step::Names, BadName));
    }
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Truthful, NumbersAndWordsThatMeanNothingMakeNoCall) {
    for (const Outcome& outcome :
         {Rotate({"a", "b", "image/bmp", 45, ""}, {}), Rotate({"a", "b", "image/bmp", 90, "X"}, {}),
          Rotate({"a", "b", "image/bmp", 45, "H"}, {}), Crop({"a", "b", "image/bmp", 0, 0, 0, 1}, {}),
          Crop({"a", "b", "image/bmp", 0, 0, 1, -1}, {}), Resize({"a", "b", "image/bmp", {.height = 0}}, {}),
          Resize({"a", "b", "image/bmp", {.height = -5}}, {}),
          Resize({"a", "b", "image/bmp", {.height = 5, .percent = 5}}, {})}) {
        EXPECT_EQ(End(outcome), std::tuple(Step::Names, InvalidParameter));
    }
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Truthful, SizeThatCannotBeIsNotAskedFor) {
    fake_.ReportSize(1, 1000);
    EXPECT_EQ(End(MakeThumbnail({"a", "b", "image/bmp"}, 100, {})), std::tuple(Step::Make, InvalidParameter));
    EXPECT_EQ(CountOfAll("GdipGetImageThumbnail"), 0u);
    ExpectNothingLeftOpen("thumb");
}

TEST_F(Truthful, ResizedPictureIsAPixelWideAtLeast) {
    fake_.ReportSize(1, 1000);
    EXPECT_EQ(Resize({"a", "b", "image/bmp", {.height = 100}}, {}).result, (PixelSize{1, 100}));
    EXPECT_EQ(fake_.CountOf("GdipCreateBitmapFromScan0 0 1 100 0 2.49857e+06"), 1u);
}

TEST_F(Truthful, SourceWithoutSizeIsTold) {
    fake_.ReportSize(0, 20);
    EXPECT_EQ(End(Resize({"a", "b", "image/bmp", {.height = 10}}, {})), std::tuple(Step::Measure, InvalidParameter));
    ExpectNothingLeftOpen("resize");
    EXPECT_EQ(CountOfAll("GdipDisposeImage"), 1u);
}

TEST_F(Truthful, CropMustLieWithinThePicture) {
    const auto crop = [](std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return End(Crop({"a", "b", "image/bmp", x, y, width, height}, {}));
    };
    EXPECT_EQ(crop(0, 0, 30, 20), std::tuple(Step::None, Done));
    EXPECT_EQ(crop(25, 15, 5, 5), std::tuple(Step::None, Done));
    for (const auto& [x, y, width, height] : {std::tuple{0, 0, 31, 20},
                                              {0, 0, 30, 21},
                                              {26, 15, 5, 5},
                                              {25, 16, 5, 5},
                                              {-1, 0, 5, 5},
                                              {0, -1, 5, 5},
                                              {INT32_MAX, 0, 1, 1},
                                              {0, INT32_MAX, 1, 1}}) {
        EXPECT_EQ(crop(x, y, width, height), std::tuple(Step::Cut, Refused)) << x << "," << y;
    }
    EXPECT_EQ(CountOfAll("GdipCloneBitmapAreaI"), 2u);
}

TEST_F(Truthful, FirstFailureEndsAResize) {
    for (const auto& [name, step] : {std::pair{"GdipGetImagePixelFormat", Step::Load},
                                     {"GdipCreateBitmapFromScan0", Step::Make},
                                     {"GdipGetImageGraphicsContext", Step::Surface},
                                     {"GdipDrawImageRectRectI", Step::Draw}}) {
        fake_.Answer(name, 3);
        EXPECT_EQ(End(Resize({"a", "b", "image/bmp", {.height = 10}}, {})), std::tuple(step, OutOfMemory)) << name;
        EXPECT_EQ(fake_.Calls()[fake_.Calls().size() - 1].substr(0, 15), "GdiplusShutdown") << name;
        fake_.Answer(name, 0);
    }
    EXPECT_EQ(CountOfAll("GdipSaveImageToFile"), 0u);
}

TEST_F(Truthful, FirstFailureEndsAnAnnotation) {
    for (const auto& [name, step] : {std::pair{"GdipCreateFontFamilyFromName", Step::Font},
                                     {"GdipCreateFont", Step::Font},
                                     {"GdipGetImagePixelFormat", Step::Load},
                                     {"GdipGetImageGraphicsContext", Step::Surface},
                                     {"GdipDrawImage", Step::Draw},
                                     {"GdipDrawString", Step::DrawText}}) {
        fake_.Answer(name, 5);
        EXPECT_EQ(End(Annotate({"a", "b", "image/bmp", Hello()}, {})), std::tuple(step, 5)) << name;
        ExpectNothingLeftOpen(name);
        fake_.Answer(name, 0);
    }
    EXPECT_EQ(CountOfAll("GdipSaveImageToFile"), 0u);
    EXPECT_EQ(CountOfAll("GdipDeleteFont"), 4u) << "two were not made";
    EXPECT_EQ(CountOfAll("GdipDeleteGraphics"), 3u);
}

TEST_F(Truthful, FailureOfTheTurnEndsARotation) {
    for (const char* name : {"GdipCloneImage", "GdipImageRotateFlip"}) {
        fake_.Answer(name, 6);
        EXPECT_EQ(End(Rotate({"a", "b", "image/bmp", 90, ""}, {})), std::tuple(Step::Turn, 6)) << name;
        fake_.Answer(name, 0);
    }
    EXPECT_EQ(CountOfAll("GdipSaveImageToFile"), 0u);
}

TEST_F(Truthful, StampThatCannotBeDecodedIsToldFromThePicture) {
    fake_.Answer("GdipDrawImage#2", 3);
    fake_.Answer("GdipGetImageThumbnail#1", 3); // what it is asked with
    EXPECT_EQ(End(Stamp({"a", "b", "image/bmp", 0, 0, "s"}, {})), std::tuple(Step::DrawStamp, OutOfMemory));
    fake_.Answer("GdipDrawImage#4", 3);
    EXPECT_EQ(End(Stamp({"a", "b", "image/bmp", 0, 0, "s"}, {})), std::tuple(Step::Draw, OutOfMemory));
    fake_.Answer("GdipLoadImageFromFile#6", 10);
    EXPECT_EQ(End(Stamp({"a", "b", "image/bmp", 0, 0, "s"}, {})), std::tuple(Step::LoadStamp, FileNotFound));
    ExpectNothingLeftOpen("stamp");
}

TEST_F(Truthful, PictureWithAPaletteIsResizedAsTrueColor) {
    fake_.ReportFormat(Indexed8Format);
    EXPECT_EQ(End(Resize({"a", "b", "image/bmp", {.height = 10}}, {})), std::tuple(Step::None, Done));
    EXPECT_EQ(fake_.CountOf("GdipCreateBitmapFromScan0 0 15 10 0 2.49857e+06"), 1u);
    EXPECT_EQ(CountOfAll("GdipDrawImageRectI"), 0u) << "no copy is needed";
}

TEST_F(Truthful, PictureWithAPaletteIsDrawnOnAsATrueColorCopyWhileItStaysOpen) {
    fake_.ReportFormat(Indexed8Format);
    fake_.GiveProperties({{306, 2, std::string("now\0", 4)}});
    EXPECT_EQ(End(Stamp({"a", "b", "image/bmp", 1, 2, "s"}, {})), std::tuple(Step::None, Done));
    EXPECT_EQ(fake_.CountOf("GdipCreateBitmapFromScan0 0 30 20 0 2.49857e+06"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDrawImageRectI 55 11 0 0 30 20"), 1u);
    EXPECT_EQ(fake_.PropertiesSet(), std::vector<std::string>{"306 2 4 now"});
    EXPECT_EQ(fake_.CountOf("GdipDrawImage 55 33 0 0"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 33"), 1u);
    const Calls calls = fake_.Calls();
    EXPECT_GT(std::find(calls.begin(), calls.end(), "GdipDisposeImage 11"),
              std::find(calls.begin(), calls.end(), "GdipSaveImageToFile 33"));
}

TEST_F(Truthful, DamageIsReportedOfWhateverIsWritten) {
    fake_.ReportDamage();
    for (const auto& [name, operate] : WritingOperations) {
        const Outcome outcome = operate({});
        EXPECT_TRUE(outcome.isDamaged || outcome.isStampDamaged) << name;
        EXPECT_TRUE(outcome.isWritten) << name;
    }
}

TEST_F(Truthful, DamageIsRefusedBeforeAnythingIsDecoded) {
    for (const auto& [name, operate] : WritingOperations) {
        const std::size_t before = CountOfAll("ImagingRefuseImageDamage");
        operate({.refusesDamage = true});
        EXPECT_EQ(CountOfAll("ImagingRefuseImageDamage") - before, name == std::string("stamp") ? 2u : 1u) << name;
    }
    EXPECT_EQ(fake_.Calls()[4], "ImagingRefuseImageDamage 11") << "at once behind the load";
}

TEST_F(Truthful, ProgressRunsUpToAllRows) {
    for (const auto& [name, operate] : WritingOperations) {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> seen;
        operate({.progress = [&](std::uint32_t done, std::uint32_t rows) {
            seen.emplace_back(done, rows);
            return true;
        }});
        ASSERT_EQ(seen.size(), 2u) << name;
        EXPECT_LE(seen[0].first, seen[1].first) << name;
        EXPECT_LE(seen[1].first, seen[1].second) << name;
        EXPECT_EQ(seen[0].second, seen[1].second) << name;
    }
}

TEST_F(Truthful, ProgressOfAResizeCountsTheRowsOfBothPictures) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> seen;
    Resize({"a", "b", "image/bmp", {.height = 15}}, {.progress = [&](std::uint32_t done, std::uint32_t rows) {
               seen.emplace_back(done, rows);
               return true;
           }});
    // The fake reports 10 and 20 rows at the save, of which the new picture has 15.
    EXPECT_EQ(seen, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{30, 35}, {35, 35}}));
    EXPECT_EQ(fake_.CountOf("ImagingWatchImage 11"), 1u);
    EXPECT_EQ(fake_.CountOf("ImagingWatchImage 33"), 1u);
}

TEST_F(Truthful, ProgressCancels) {
    for (const auto& [name, operate] : WritingOperations) {
        int asked = 0;
        const Outcome outcome = operate({.progress = [&](std::uint32_t, std::uint32_t) {
            ++asked;
            return false;
        }});
        EXPECT_EQ(asked, 1) << name;
        EXPECT_EQ(End(outcome), std::tuple(Step::Save, Aborted)) << name;
        EXPECT_FALSE(outcome.isWritten) << name;
        ExpectNothingLeftOpen(name);
    }
}

TEST_F(Truthful, NothingIsWatchedWithoutSomebodyToTell) {
    for (const auto& [name, operate] : WritingOperations) {
        operate({});
    }
    EXPECT_EQ(CountOfAll("ImagingWatchImage"), 0u);
}

TEST_F(Truthful, ResizeThatOnlyShrinksKeepsWhatIsNotHigher) {
    const Wishes onlyShrinking{.onlyShrinks = true};
    const Outcome kept = Resize({"a", "b", "image/bmp", {.height = 20}}, onlyShrinking);
    EXPECT_TRUE(kept.isWritten);
    EXPECT_EQ(kept.result.height, 20);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 11"), 1u);
    EXPECT_EQ(CountOfAll("GdipCreateBitmapFromScan0"), 0u);
    EXPECT_EQ(Resize({"a", "b", "image/bmp", {.height = 19}}, onlyShrinking).result.height, 19);
    EXPECT_EQ(CountOfAll("GdipCreateBitmapFromScan0"), 1u);
}

TEST_F(Truthful, DateThatIsNotThereIsTold) {
    std::string date;
    EXPECT_EQ(End(ReadDate("a.jpg", date, {})), std::tuple(Step::Property, PropertyNotFound));
    fake_.GiveProperties({{306, 2, std::string("now\0", 4)}});
    EXPECT_EQ(End(ReadDate("a.jpg", date, {})), std::tuple(Step::None, Done));
    EXPECT_EQ(date, "now");
    ExpectNothingLeftOpen("date");
}

TEST_F(Truthful, PropertiesOfAFileThatDoesNotLoadAreToldApartFromNone) {
    std::string list;
    EXPECT_EQ(End(ListProperties("a", list, {})), std::tuple(Step::None, Done));
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(End(ListProperties("a", list, {})), std::tuple(Step::Load, OutOfMemory));
    EXPECT_EQ(list, "");
}

TEST(StampedNameBeside, IsCutAtTheFirstDotAndStaysInTheFolder) {
    EXPECT_EQ(StampedNameBeside("b.c.png"), "b_stamped.jpg");
    EXPECT_EQ(StampedNameBeside("b"), "b_stamped.jpg");
    EXPECT_EQ(StampedNameBeside(".hidden"), "_stamped.jpg");
#ifdef _WIN32
    EXPECT_EQ(StampedNameBeside("C:\\a.b\\c.d/e.f"), "C:\\a.b\\c.d/e_stamped.jpg");
    EXPECT_EQ(StampedNameBeside("C:e.f"), "C:e_stamped.jpg");
#else
    EXPECT_EQ(StampedNameBeside("a.b/c\\d.e"), "a.b/c\\d_stamped.jpg");
#endif
}

TEST(StatusName, KnowsAll) {
    EXPECT_STREQ(StatusName(0), "Ok");
    EXPECT_STREQ(StatusName(3), "OutOfMemory");
    EXPECT_STREQ(StatusName(9), "Aborted");
    EXPECT_STREQ(StatusName(14), "FontFamilyNotFound");
    EXPECT_STREQ(StatusName(21), "ProfileNotFound");
    EXPECT_STREQ(StatusName(22), "Unknown");
    EXPECT_STREQ(StatusName(-1), "Refused");
    EXPECT_STREQ(StatusName(-2), "Unknown");
    EXPECT_STREQ(StatusName(-16001), "NoSession");
    EXPECT_STREQ(StatusName(-16006), "AlreadyThere");
    EXPECT_STREQ(StatusName(-16007), "Unknown");
}

} // namespace
