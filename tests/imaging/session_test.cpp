// The bindings' four steps, the imaging library in memory, sessions.
#include "imaging/convert.h"
#include "imaging/dimensions.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"
#include "imaging/thumbnail.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace lumbrix;
using tests::FakeImagingLibrary;

using Calls = std::vector<std::string>;

TEST(Bindings, WithoutALibraryTheyReturnZeroAndTouchNothing) {
    ASSERT_EQ(ImagingLibraryHandle, nullptr);
    SessionToken token = 7;
    std::uint32_t number = 7;
    ImageHandle image = &number;
    const GdiplusStartupInput input{};
    EXPECT_EQ(GdiplusStartup(&token, &input, nullptr), 0);
    EXPECT_EQ(GdipLoadImageFromFile(u"x", &image), 0);
    EXPECT_EQ(GdipLoadImageFromStream(nullptr, &image), 0);
    EXPECT_EQ(GdipSaveImageToStream(image, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(GdipGetImageWidth(image, &number), 0);
    EXPECT_EQ(GdipGetImageHeight(image, &number), 0);
    EXPECT_EQ(GdipGetImageThumbnail(image, 1, 1, &image), 0);
    EXPECT_EQ(GdipGetImageEncodersSize(&number, &number), 0);
    EXPECT_EQ(GdipGetImageEncoders(1, 1, &number), 0);
    EXPECT_EQ(GdipSaveImageToFile(image, u"x", nullptr, nullptr), 0);
    EXPECT_EQ(GdipDisposeImage(image), 0);
    GdiplusShutdown(token);
    EXPECT_EQ(token, 7u);
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(image, &number);
}

TEST(Bindings, NamesAreLookedUpOnEveryCall) {
    FakeImagingLibrary fake;
    std::uint32_t width = 0;
    GdipGetImageWidth(nullptr, &width);
    EXPECT_EQ(width, 30u);
    // The same binding meets another module at once.
    const ModuleHandle first = ImagingLibraryHandle;
    ImagingLibraryHandle = LoadModule(OTHER_MODULE);
    ASSERT_NE(ImagingLibraryHandle, nullptr);
    EXPECT_EQ(GdipGetImageWidth(nullptr, &width), 77);
    UnloadModule(ImagingLibraryHandle);
    ImagingLibraryHandle = first;
    EXPECT_EQ(GdipGetImageWidth(nullptr, &width), 0);
}

TEST(Bindings, StatusOfTheFunctionIsPassedUp) {
    FakeImagingLibrary fake;
    fake.Answer("GdipDisposeImage", 6);
    EXPECT_EQ(GdipDisposeImage(nullptr), 6);
}

TEST(Bindings, DrawingBindingsDoNothingWithoutALibrary) {
    ASSERT_EQ(ImagingLibraryHandle, nullptr);
    std::uint32_t number = 7;
    std::int32_t mode = 7;
    void* handle = &number;
    EXPECT_EQ(GdipCreateBitmapFromScan0(1, 1, 0, 0, nullptr, &handle), 0);
    EXPECT_EQ(GdipCloneImage(handle, &handle), 0);
    EXPECT_EQ(GdipGetImageGraphicsContext(handle, &handle), 0);
    EXPECT_EQ(GdipCreateFontFamilyFromName("Arial", &handle), 0);
    EXPECT_EQ(GdipCreateFont(handle, 1, 0, 2, &handle), 0);
    EXPECT_EQ(GdipCreateSolidFill(0, &handle), 0);
    EXPECT_EQ(GdipDrawString(handle, "x", handle, nullptr, handle), 0);
    EXPECT_EQ(GdipGetInterpolationMode(handle, &mode), 0);
    EXPECT_EQ(GdipGetPropertySize(handle, &number, &number), 0);
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(mode, 7);
    EXPECT_EQ(handle, &number);
}

TEST(Bindings, ParallelogramsTestTheirAddressAndTheirSurface) {
    FakeImagingLibrary fake;
    const IntegerPoint points[3]{};
    void* const graphics = &fake;
    fake.Answer("GdipDrawImagePointsI", 5);
    EXPECT_EQ(GdipDrawImagePointsI(graphics, nullptr, points, 3), 5);
    EXPECT_EQ(GdipDrawImagePointsI(nullptr, nullptr, points, 3), 0);
    const ModuleHandle first = ImagingLibraryHandle;
    ImagingLibraryHandle = LoadModule(OTHER_MODULE); // which has no such name
    EXPECT_EQ(GdipDrawImagePointsI(graphics, nullptr, points, 3), 0);
    UnloadModule(ImagingLibraryHandle);
    ImagingLibraryHandle = first;
    EXPECT_EQ(fake.Calls().size(), 1u);
}

TEST(Bindings, SavesAlwaysPassTheFlushFlag) {
    FakeImagingLibrary fake;
    const Clsid encoder{0x12345678, 0, 0, {}};
    GdipSaveImageToFile(nullptr, u"x", &encoder, &encoder);
    EXPECT_EQ(fake.LastParameters(), "count 1, guid 292266FC, values 1, type 4, value 20, encoder 12345678");
}

TEST(ImagingLibrary, MissingModuleIsSimplyKept) {
    SubstituteModule("gdiplus.dll", "no such module");
    LoadImagingLibrary();
    SubstituteModule("gdiplus.dll", "");
    EXPECT_EQ(ImagingLibraryHandle, nullptr);
    UnloadImagingLibrary();
    EXPECT_EQ(ImagingLibraryHandle, nullptr);
}

TEST(ImagingLibrary, IsLoadedOnceAndUnloadedByTheUnloadThatAnswersTheFirstLoad) {
    FakeImagingLibrary fake; // loads too
    const ModuleHandle first = ImagingLibraryHandle;
    LoadImagingLibrary();
    EXPECT_EQ(ImagingLibraryHandle, first);
    UnloadImagingLibrary();
    EXPECT_EQ(ImagingLibraryHandle, first);
    UnloadImagingLibrary();
    EXPECT_EQ(ImagingLibraryHandle, nullptr);
    UnloadImagingLibrary(); // one too many
    LoadImagingLibrary();
    EXPECT_NE(ImagingLibraryHandle, nullptr);
}

TEST(ImagingLibrary, LoadsThatFailAreCountedTooAndTriedAgain) {
    SubstituteModule("gdiplus.dll", "no such module");
    LoadImagingLibrary();
    FakeImagingLibrary fake;
    EXPECT_NE(ImagingLibraryHandle, nullptr);
    UnloadImagingLibrary(); // whoever failed to load it takes it from nobody
    EXPECT_NE(ImagingLibraryHandle, nullptr);
}

TEST(ImagingLibrary, IsLoadedAndUnloadedByManyThreads) {
    FakeImagingLibrary fake;
    const auto comeAndGo = [] {
        for (int i = 0; i < 1000; ++i) {
            LoadImagingLibrary();
            UnloadImagingLibrary();
        }
    };
    const ModuleHandle first = ImagingLibraryHandle;
    std::thread other(comeAndGo);
    comeAndGo();
    other.join();
    EXPECT_EQ(ImagingLibraryHandle, first);
    UnloadImagingLibrary();
    EXPECT_EQ(ImagingLibraryHandle, nullptr) << "every load was answered";
    LoadImagingLibrary();
}

TEST(ImagingLibrary, UnloadEndsTheSessionsThatAreStillOpen) {
    FakeImagingLibrary fake;
    fake.Answer("GdipLoadImageFromFile", 10);
    LoadImagingLibrary();
    const ModuleHandle kept = LoadModule(FAKE_MODULE); // so that its record can still be read
    ConvertImageFile("a.png", "b.jpg", "image/jpeg");
    ConvertImageFile("a.png", "b.jpg", "image/jpeg");
    SessionToken token = 0;
    EXPECT_EQ(StartLastingSession(&token), 0);
    EndLastingSession(token);
    EXPECT_EQ(fake.CountOf("GdiplusShutdown 1"), 1u);
    UnloadImagingLibrary();
    EXPECT_EQ(fake.CountOf("GdiplusShutdown 1"), 1u) << "somebody else has it loaded";
    UnloadImagingLibrary();
    LoadImagingLibrary();
    EXPECT_EQ(fake.CountOf("GdiplusShutdown 1"), 3u);
    UnloadImagingLibrary();
    LoadImagingLibrary();
    EXPECT_EQ(fake.CountOf("GdiplusShutdown 1"), 3u) << "each is ended once";
    UnloadModule(kept);
}

TEST(ImagingLibrary, WithoutItConversionsFindNoEncoderAndDoNotCrash) {
    std::int32_t width = 5, height = 6;
    EXPECT_EQ(ConvertImageFile("a.png", "b.jpg", "image/jpeg"), NoEncoder);
    EXPECT_EQ(ConvertImageFileToThumb("a.png", 10, "b.jpg", "image/jpeg"), NoEncoder);
    EXPECT_EQ(GetImageFileDimensions("a.png", &width, &height), 0);
    EXPECT_EQ(width, 5);
    EXPECT_EQ(height, 6);
}

TEST(Session, StartsWithTheUsualRecord) {
    FakeImagingLibrary fake;
    const StatusValue token = StartImagingSession();
    EXPECT_GT(token, 0);
    EndImagingSession(token);
    EXPECT_EQ(fake.Calls(), (Calls{"GdiplusStartup", "GdiplusShutdown 1"}));
}

TEST(Session, RefusedStartIsPassedToTheShutdownAsItIs) {
    FakeImagingLibrary fake;
    fake.Answer("GdiplusStartup", 17);
    const StatusValue token = StartImagingSession();
    EXPECT_EQ(token, NoSession);
    EndImagingSession(token);
    EXPECT_EQ(fake.Calls(), (Calls{"GdiplusStartup", "GdiplusShutdown -16001"}));
}

TEST(Session, WithoutALibraryTheTokenIsZero) { EXPECT_EQ(StartImagingSession(), 0); }

TEST(Session, FailedLoadsLeaveOneMoreOpenEachTime) {
    FakeImagingLibrary fake;
    fake.Answer("GdipLoadImageFromFile", 10);
    for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(ConvertImageFile("a.png", "b.jpg", "image/jpeg"), 10);
    }
    EXPECT_EQ(fake.CountOf("GdiplusStartup"), 1000u);
    EXPECT_EQ(fake.CountOf("GdiplusShutdown 1"), 0u);
}

} // namespace
