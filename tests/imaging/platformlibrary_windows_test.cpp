// Pictures in memory by the platform's own imaging library, which lies in the system's folder.
#include "imaging/convert.h"
#include "imaging/gdiplus/bindings.h"
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

} // namespace
