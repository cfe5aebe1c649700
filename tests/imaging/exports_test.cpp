// The exported procedures as programs call them, with the real imaging library behind.
#include "imaging/exports/lumbrix.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

extern "C" unsigned SizeOfJobInC(void); // of header.c

namespace {

using namespace tests;

// A one-by-two picture: a blue pixel over a red one.
const std::string
    SmallBmp("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
             "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
             62);

class Exports : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        WriteBytes(folder_ / "source.bmp", SmallBmp);
    }

    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    std::string Start(const std::string& name, std::size_t count) const {
        return ReadBytes(folder_ / name).substr(0, count);
    }

    TemporaryFolder folder_;
};

TEST_F(Exports, EachConversionWritesItsFormatWhateverTheExtension) {
    const std::string source = Path("source.bmp");
    EXPECT_EQ(ConvertImageToBmp(source.c_str(), Path("a.png").c_str()), 0);
    EXPECT_EQ(Start("a.png", 2), "BM");
    EXPECT_EQ(ConvertImageToJpeg(source.c_str(), Path("b.gif").c_str()), 0);
    EXPECT_EQ(Start("b.gif", 2), "\xFF\xD8");
    EXPECT_EQ(ConvertImageToGif(source.c_str(), Path("c.png").c_str()), 0);
    EXPECT_EQ(Start("c.png", 3), "GIF");
    EXPECT_EQ(ConvertImageToTiff(source.c_str(), Path("d.bmp").c_str()), 0);
    EXPECT_EQ(Start("d.bmp", 2), "II");
    EXPECT_EQ(ConvertImageToPng(source.c_str(), Path("e.jpg").c_str()), 0);
    EXPECT_EQ(Start("e.jpg", 4), "\x89PNG");
}

TEST_F(Exports, EachThumbnailWritesItsFormatAtItsHeight) {
    const std::string source = Path("source.bmp");
    using Thumb = int32_t(LUMBRIX_CALL*)(const char*, int32_t, const char*);
    const std::pair<Thumb, std::string> doors[] = {{ConvertImageToThumbBmp, "BM"},
                                                   {ConvertImageToThumbJpeg, "\xFF\xD8"},
                                                   {ConvertImageToThumbGif, "GI"},
                                                   {ConvertImageToThumbTiff, "II"},
                                                   {ConvertImageToThumbPng, "\x89P"}};
    for (const auto& [thumb, start] : doors) {
        EXPECT_EQ(thumb(source.c_str(), 20, Path("thumb").c_str()), 0);
        EXPECT_EQ(Start("thumb", 2), start);
        int32_t width = 0, height = 0;
        EXPECT_EQ(GetImageDimensions(Path("thumb").c_str(), &width, &height), 0);
        EXPECT_EQ(width, 10);
        EXPECT_EQ(height, 20);
    }
}

TEST_F(Exports, SglIsNeverWritten) {
    EXPECT_EQ(ConvertImageToSgl(Path("source.bmp").c_str(), Path("out.sgl").c_str()), -16002);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out.sgl"));
}

TEST_F(Exports, NegativeThumbnailHeightIsRefused) {
    EXPECT_EQ(ConvertImageToThumbPng(Path("source.bmp").c_str(), -5, Path("t.png").c_str()), 2);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "t.png"));
}

TEST_F(Exports, NullNamesCountAsBlank) {
    int32_t width = 3, height = 4;
    EXPECT_EQ(ConvertImageToPng(nullptr, nullptr), 0);
    EXPECT_EQ(ConvertImageToThumbPng(nullptr, 4, nullptr), 0);
    EXPECT_EQ(GetImageDimensions(nullptr, &width, &height), 0);
    EXPECT_EQ(width, 3);
}

TEST_F(Exports, BlankNamesWriteNothing) {
    EXPECT_EQ(ConvertImageToPng("  ", "  "), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(Exports, DimensionsOfAMissingFileStayAsTheyWere) {
    int32_t width = 3, height = 4;
    EXPECT_EQ(GetImageDimensions(Path("none.png").c_str(), &width, &height), 10);
    EXPECT_EQ(width, 3);
    EXPECT_EQ(height, 4);
}

TEST_F(Exports, DamagedSourceLeavesTheTargetAsItWas) {
    WriteBytes(folder_ / "broken.bmp", SmallBmp.substr(0, 56));
    WriteBytes(folder_ / "target.png", "old");
    EXPECT_EQ(ConvertImageToPng(Path("broken.bmp").c_str(), Path("target.png").c_str()), 3);
    EXPECT_EQ(Start("target.png", 99), "old");
}

TEST_F(Exports, SourceAsItsOwnDestinationIsRefused) {
    const std::string source = Path("source.bmp");
    EXPECT_EQ(ConvertImageToBmp(source.c_str(), source.c_str()), 1);
    EXPECT_EQ(Start("source.bmp", 99), SmallBmp);
}

TEST_F(Exports, SourceThatCannotBeReadMayBeTriedAgainAndAgain) {
    for (int round = 0; round < 500; ++round) {
        ASSERT_EQ(ConvertImageToPng(Path("none.bmp").c_str(), Path("x.png").c_str()), 10);
    }
    EXPECT_EQ(ConvertImageToPng(Path("source.bmp").c_str(), Path("x.png").c_str()), 0);
}

TEST_F(Exports, NamesBeyondAsciiAreFound) {
#ifdef _WIN32
    const std::string name = "gr\xFC\xDF"
                             "e.bmp"; // the Western code page
#else
    const std::string name = "gr\xFC\xDF-\u20ac-\U0001F600.bmp"; // two bytes that are not UTF-8 among some that are
#endif
    EXPECT_EQ(ConvertImageToBmp(Path("source.bmp").c_str(), (folder_.Path().string() + "/" + name).c_str()), 0);
    int32_t width = 0, height = 0;
    EXPECT_EQ(GetImageDimensions((folder_.Path().string() + "/" + name).c_str(), &width, &height), 0);
    EXPECT_EQ(height, 2);
}

TEST(ExportsUnloaded, ConversionsFindNoEncoder) {
    TemporaryFolder folder;
    WriteBytes(folder / "a.bmp", SmallBmp);
    EXPECT_EQ(ConvertImageToPng((folder / "a.bmp").string().c_str(), (folder / "b.png").string().c_str()), -16002);
}

TEST(ExportsUnloaded, FreeingNullIsHarmless) { lumbrix_free(nullptr); }

TEST(ExportsUnloaded, JobIsTheSameInC) { EXPECT_EQ(SizeOfJobInC(), sizeof(lumbrix_job)); }

TEST(ExportsUnloaded, VersionOfTheHeaderIsThatOfTheProjectAndTheLibrary) {
    const std::string text = std::to_string(LUMBRIX_VERSION_MAJOR) + "." + std::to_string(LUMBRIX_VERSION_MINOR) + "." +
                             std::to_string(LUMBRIX_VERSION_PATCH);
    EXPECT_EQ(text, PROJECT_VERSION);
    EXPECT_STREQ(LUMBRIX_VERSION_TEXT, PROJECT_VERSION);
    EXPECT_EQ(lumbrix_version_number(), LUMBRIX_VERSION);
    EXPECT_EQ(LUMBRIX_VERSION_OF(1, 5, 0), 1005000u);
    EXPECT_LT(LUMBRIX_VERSION_OF(1, 999, 999), LUMBRIX_VERSION_OF(2, 0, 0));
}

TEST(ExportsUnloaded, VersionIsAText) { EXPECT_STREQ(lumbrix_version(), PROJECT_VERSION); }

} // namespace
