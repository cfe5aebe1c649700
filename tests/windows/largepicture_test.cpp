// A picture of 24 megapixels in the annotate and crop window: whether full size and screen agree, and who waits how
// long.
#include "tests/windows/annotatefixture.h"
#include "tests/windows/largebmp.h"

#include <cmath>
#include <cstring>
#include <iostream>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int Width = LargeWidth;
constexpr int Height = LargeHeight;

class LargePicture : public PictureWindowTest {
  protected:
    // A part of a picture, so that not all of it must be looked through.
    std::string CutOut(const std::string& picture, int x, int y, int width, int height) const {
        const std::string part = Path("part.png");
        EXPECT_EQ(CropImage(picture.c_str(), part.c_str(), x, y, width, height), 0);
        return part;
    }
};

TEST_F(LargePicture, TextStandsWhereTheMouseWasAndIsSeenBeforeTheFullSizeIsWritten) {
    WriteBytes(program_.Folder() / "large.bmp", MakeLargeBmp([](int, std::string&) {}));
    ASSERT_EQ(ConvertImageToJpeg(Path("large.bmp").c_str(), Path("large.jpg").c_str()), 0);
    const OpenWindow window = Open(AnnotateButton, Path("large.jpg"), Path("out.jpg"));
    const double scale = ScaleOf(window, Width, Height);
    constexpr POINT Place{300, 200};
    window.SetText(AnnotationBox, "HHHHHH");
    const auto isWritten = [&] {
        const auto files = TemporaryFiles();
        return std::all_of(files.begin(), files.end(), [](const auto& file) { return file.second.bytes > 0; });
    };
    const auto isSeen = [&] {
        for (int x = 0; x < 20; ++x) {
            if (GetRValue(PixelSoFarAt(On(window, Place.x + x, Place.y + 6))) < 128) {
                return true;
            }
        }
        return false;
    };
    MoveMouse(On(window, Place.x, Place.y));
    PressMouse();
    const DWORD start = GetTickCount();
    ReleaseMouse();
    ASSERT_TRUE(WaitFor(isSeen));
    const DWORD seen = GetTickCount();
    EXPECT_FALSE(isWritten());
    Settle(window);
    const DWORD written = GetTickCount();
    EXPECT_TRUE(isWritten());
    std::cout << "the annotated preview was seen after " << seen - start << " ms, the full size written after "
              << written - start << " ms\n";
    CloseAndWait(window);
    WaitForTheEnd();

    EXPECT_EQ(SizeOf(Path("out.jpg")), std::pair(Width, Height));
    // Where the same letters stand in a picture of their own, their free space included.
    WritePlainPng(Path("small.png"), 1000, 200, White);
    AnnotateImage(Path("small.png").c_str(), Path("letters.png").c_str(), 0, 0, "HHHHHH", "Arial",
                  static_cast<std::int32_t>(std::lround(10 * scale)), 0, 0, 0, 0, 255, 0, 0, 0);
    const InkBox letters = InkIn(Path("letters.png"));
    const int left = static_cast<int>(Place.x * scale) - 50;
    const int top = static_cast<int>(Place.y * scale) - 50;
    const InkBox ink = InkIn(CutOut(Path("out.jpg"), left, top, 1000, 300));
    EXPECT_NEAR(left + ink.left - letters.left, Place.x * scale, scale);
    EXPECT_NEAR(top + ink.top - letters.top, Place.y * scale, scale);
    EXPECT_NEAR(ink.right - ink.left, letters.right - letters.left, scale);
    EXPECT_NEAR(ink.bottom - ink.top, letters.bottom - letters.top, scale);
}

// Two bytes of column and two of row in three: no pixel is like another but its neighbour at the left.
TEST_F(LargePicture, CropIsCutWhereTheMouseWas) {
    WriteBytes(program_.Folder() / "large.bmp", MakeLargeBmp([](int y, std::string& row) {
                   for (int x = 0; x < Width; ++x) {
                       const int place = (x / 2) << 12 | y;
                       std::memcpy(&row[static_cast<std::size_t>(x) * 3], &place, 3);
                   }
               }));
    const OpenWindow window = Open(CropButton, Path("large.bmp"), Path("out.png"));
    const double scale = ScaleOf(window, Width, Height);
    constexpr POINT From{100, 50};
    constexpr POINT To{131, 90};
    DragMouse(On(window, From.x, From.y), On(window, To.x, To.y));
    window.WaitUntilGone();
    CloseAndWait(Opened(program_.Further()));
    WaitForTheEnd();
    const BmpView picture = ReadPicture(Path("out.png"));
    EXPECT_EQ(picture.Width(), std::lround(To.x * scale) - std::lround(From.x * scale));
    EXPECT_EQ(picture.Height(), std::lround(To.y * scale) - std::lround(From.y * scale));
    const Rgb first = picture.At(0, 0);
    const int place = first.blue | first.green << 8 | first.red << 16;
    EXPECT_NEAR((place >> 12) * 2, From.x * scale, scale);
    EXPECT_NEAR(place & 0xFFF, From.y * scale, scale);
}

} // namespace
