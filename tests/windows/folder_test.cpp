// A folder of two hundred files through the batch in the real window.
#include "imaging/exports/lumbrix.h"
#include "tests/support/bmpfiles.h"
#include "tests/windows/programfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int Files = 200;

class WholeFolder : public ProgramTest {
  protected:
    // A picture of 24 by 16 pixels whose colours depend on its number.
    static std::string PictureOf(int number) {
        return MakeBmp(24, 16, [&](int x, int y) {
            return Rgb{static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(y * 15),
                       static_cast<std::uint8_t>(x * 10)};
        });
    }

    // Every tenth file each: all formats, a wrong extension, a broken file, one that is not in the list, no picture.
    void MakeFile(int number) const {
        const std::filesystem::path folder = program_.Folder() / "in";
        const std::string stem = "picture" + std::to_string(number);
        const std::string bmp = PictureOf(number);
        const std::string plain = (folder / (stem + ".bmp")).string();
        WriteBytes(plain, bmp);
        const auto convert = [&](auto door, const char* extension) {
            EXPECT_EQ(door(plain.c_str(), (folder / (stem + extension)).string().c_str()), 0);
            std::filesystem::remove(plain);
        };
        switch (number % 10) {
        case 0:
        case 9:
            return;
        case 1:
            return convert(ConvertImageToJpeg, ".jpg");
        case 2:
            return convert(ConvertImageToGif, ".gif");
        case 3:
            return convert(ConvertImageToTiff, ".tiff");
        case 4:
            return convert(ConvertImageToPng, ".PNG");
        case 5:
            return convert(ConvertImageToPng, ".jpg");
        case 6:
            std::filesystem::rename(plain, folder / (stem + ".png"));
            return WriteBytes(folder / (stem + ".png"), "\x89PNG broken");
        case 7:
            return convert(ConvertImageToJpeg, ".jpeg");
        default:
            std::filesystem::rename(plain, folder / (stem + ".txt"));
        }
    }
};

TEST_F(WholeFolder, OfTwoHundredFilesIsCountedAndWritten) {
    LoadImagingLibrary();
    program_.SetText(SourceFolderBox, MakeFolder("in"));
    program_.SetText(TargetBox, MakeFolder("out"));
    for (int number = 0; number < Files; ++number) {
        MakeFile(number);
    }
    program_.SetText(HeightBox, "8");
    program_.Click(PngRadio);
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: 140 files were processed. \r\n60 files could not be resized.");
    int written = 0;
    for (const auto& entry : std::filesystem::directory_iterator(program_.Folder() / "out")) {
        int32_t width = 0, height = 0;
        EXPECT_EQ(GetImageDimensions(entry.path().string().c_str(), &width, &height), 0);
        EXPECT_EQ(width, 12);
        EXPECT_EQ(height, 8);
        EXPECT_EQ(entry.path().extension(), ".png");
        ++written;
    }
    EXPECT_EQ(written, 140);
    UnloadImagingLibrary();
}

} // namespace
