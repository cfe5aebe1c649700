// Pictures in memory by the platform's own imaging library, which lies in the system's folder.
#include "imaging/convert.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/icon.h"
#include "imaging/paths.h"
#include "imaging/session.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

// A one-by-two picture: a blue pixel over a red one.
const std::string
    SmallBitmap("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
                "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
                62);

class PlatformLibrary : public testing::Test {
  protected:
    void SetUp() override {
        SubstituteModule("gdiplus.dll", SystemFolderPath() + "gdiplus.dll");
        LoadImagingLibrary();
        ASSERT_NE(ImagingLibraryHandle, nullptr);
        ASSERT_EQ(FindProcedure(ImagingLibraryHandle, "ImagingWatchImage"), nullptr) << "ours, not the platform's";
    }
    void TearDown() override {
        UnloadImagingLibrary();
        SubstituteModule("gdiplus.dll", "");
    }

    // What the bytes of a picture become in a format; empty where that failed.
    static std::string Converted(const std::string& bytes, const char* mimeWord) {
        Wishes wishes;
        wishes.input = MemoryBytes{bytes.data(), bytes.size()};
        std::string result;
        wishes.output = [&](GrowingMemory& written) {
            result.assign(reinterpret_cast<const char*>(written.Data()), written.Size());
            return true;
        };
        const Outcome outcome = Convert({"the input", "the output", mimeWord}, wishes);
        EXPECT_EQ(outcome.first.status, Done) << StatusName(outcome.first.status);
        EXPECT_EQ(outcome.source.height, 2);
        return result;
    }
};

TEST_F(PlatformLibrary, ReadsAndWritesMemory) {
    const std::string png = Converted(SmallBitmap, "image/png");
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(png.substr(png.size() - 8, 4), "IEND") << "all of it";
    EXPECT_EQ(Converted(SmallBitmap, "image/jpeg").substr(0, 2), "\xFF\xD8");
    const std::string again = Converted(png, "image/bmp");
    EXPECT_EQ(again.substr(0, 2), "BM");
    EXPECT_EQ(Converted(Converted(SmallBitmap, "image/tiff"), "image/png"), png);
}

TEST_F(PlatformLibrary, MakesIcons) {
    Wishes wishes;
    wishes.input = MemoryBytes{SmallBitmap.data(), SmallBitmap.size()};
    std::string icon;
    wishes.output = [&](GrowingMemory& written) {
        icon.assign(reinterpret_cast<const char*>(written.Data()), written.Size());
        return true;
    };
    const Outcome outcome = MakeIcon({"the input", "the output", {16, 128}}, wishes);
    EXPECT_EQ(outcome.first.status, Done) << StatusName(outcome.first.status);
    ASSERT_GT(icon.size(), 1200u);
    EXPECT_EQ(icon.substr(0, 8), std::string("\0\0\1\0\2\0\x10\x10", 8));
    // Blue, green, red, alpha; that library blends what lies between pixels and at their borders.
    const auto channelAt = [&](std::size_t x, std::size_t y, std::size_t channel) {
        return static_cast<unsigned char>(icon[6 + 32 + 40 + 4 * ((15 - y) * 16 + x) + channel]);
    };
    EXPECT_GT(channelAt(7, 2, 0), channelAt(7, 2, 2)) << "blue above";
    EXPECT_GT(channelAt(7, 13, 2), channelAt(7, 13, 0)) << "red below";
    EXPECT_GT(channelAt(7, 4, 3), 100);
    EXPECT_EQ(channelAt(1, 4, 3), 0) << "beside the picture";
    EXPECT_NE(icon.find("IEND"), std::string::npos);
}

} // namespace
