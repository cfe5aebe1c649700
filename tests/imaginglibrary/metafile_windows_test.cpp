// Metafiles drawn by the system's player.
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

// Fills a rectangle in blue.
void DrawBlueBox(HDC context, const RECT& box) {
    const HBRUSH brush = CreateSolidBrush(RGB(0, 0, 255));
    FillRect(context, &box, brush);
    DeleteObject(brush);
}

class Metafile : public testing::Test {
  protected:
    // An enhanced metafile whose frame covers `width` by `height` pixels of the screen, with a box in its middle.
    void WriteEnhanced(const std::string& name, int width, int height) {
        const HDC screen = GetDC(nullptr);
        const double horizontal = 100.0 * GetDeviceCaps(screen, HORZSIZE) / GetDeviceCaps(screen, HORZRES);
        const double vertical = 100.0 * GetDeviceCaps(screen, VERTSIZE) / GetDeviceCaps(screen, VERTRES);
        const RECT frame{0, 0, static_cast<LONG>(width * horizontal + 0.5), static_cast<LONG>(height * vertical + 0.5)};
        const HDC context = CreateEnhMetaFileW(screen, (folder_ / name).c_str(), &frame, nullptr);
        DrawBlueBox(context, {width / 4, height / 4, width * 3 / 4, height * 3 / 4});
        DeleteEnhMetaFile(CloseEnhMetaFile(context));
        ReleaseDC(nullptr, screen);
    }

    // A placeable Windows metafile of `width` by `height` units, 96 to the inch, with a box in its middle.
    void WritePlaceable(const std::string& name, int width, int height) {
        const HDC context = CreateMetaFileW(nullptr);
        SetMapMode(context, MM_ANISOTROPIC);
        SetWindowOrgEx(context, 0, 0, nullptr);
        SetWindowExtEx(context, width, height, nullptr);
        DrawBlueBox(context, {width / 4, height / 4, width * 3 / 4, height * 3 / 4});
        const HMETAFILE metafile = CloseMetaFile(context);
        std::string bytes(GetMetaFileBitsEx(metafile, 0, nullptr), '\0');
        GetMetaFileBitsEx(metafile, static_cast<UINT>(bytes.size()), bytes.data());
        DeleteMetaFile(metafile);
        const WORD header[11] = {0xCDD7, 0x9AC6, 0, 0, 0, static_cast<WORD>(width), static_cast<WORD>(height),
                                 96,     0,      0, 0};
        WriteBytes(folder_ / name, std::string(reinterpret_cast<const char*>(header), sizeof header) + bytes);
    }

    void ExpectBoxOnWhite(const PixelSource& picture) {
        const PictureInfo& info = picture.Info();
        const auto colors = ColorsOf(picture);
        const auto at = [&](std::uint32_t x, std::uint32_t y) { return colors.at(y * info.width + x); };
        EXPECT_EQ(info.format, PixelFormat::Rgb32);
        EXPECT_EQ(at(1, 1), White);
        EXPECT_EQ(at(info.width - 2, info.height - 2), White);
        EXPECT_EQ(at(info.width / 2, info.height / 2), Blue);
        EXPECT_EQ(at(info.width / 4 + 3, info.height / 4 + 3), Blue);
        EXPECT_EQ(at(info.width / 4 - 3, info.height / 2), White);
    }

    TemporaryFolder folder_;
};

TEST_F(Metafile, EnhancedOneIsDrawnAtTheSizeOfItsFrame) {
    WriteEnhanced("a.emf", 120, 80);
    const auto picture = OpenPicture(folder_ / "a.emf");
    ASSERT_TRUE(picture.Ok());
    EXPECT_NEAR((*picture)->Info().width, 120, 1);
    EXPECT_NEAR((*picture)->Info().height, 80, 1);
    ExpectBoxOnWhite(**picture);
}

TEST_F(Metafile, PlaceableOneIsDrawnAtTheSizeOfItsBounds) {
    WritePlaceable("a.wmf", 90, 60);
    const auto picture = OpenPicture(folder_ / "a.wmf");
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().width, 90u);
    EXPECT_EQ((*picture)->Info().height, 60u);
    EXPECT_EQ((*picture)->Info().resolution.horizontal, 96);
    ExpectBoxOnWhite(**picture);
}

// Strips of the player hold four mebibytes; this picture takes several.
TEST_F(Metafile, StripsFitTogether) {
    WritePlaceable("tall.wmf", 1000, 3000);
    const auto picture = OpenPicture(folder_ / "tall.wmf");
    ASSERT_TRUE(picture.Ok());
    ExpectBoxOnWhite(**picture);
    const auto colors = ColorsOf(**picture);
    for (std::uint32_t y = 755; y < 2245; ++y) {
        ASSERT_EQ(colors.at(y * 1000 + 500), Blue) << y;
    }
}

TEST_F(Metafile, CutOffOrEmptyOnesGiveAStatus) {
    WriteEnhanced("a.emf", 40, 30);
    const std::string whole = ReadBytes(folder_ / "a.emf");
    for (const std::size_t length : {std::size_t{44}, std::size_t{87}, whole.size() / 2}) {
        WriteBytes(folder_ / "cut.emf", whole.substr(0, length));
        const auto picture = OpenPicture(folder_ / "cut.emf");
        EXPECT_EQ(picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus(), UndecodableContent) << length;
    }
    WritePlaceable("a.wmf", 40, 30);
    std::string placeable = ReadBytes(folder_ / "a.wmf");
    placeable[14] = placeable[15] = 0; // no units to the inch
    WriteBytes(folder_ / "zero.wmf", placeable);
    EXPECT_EQ(OpenPicture(folder_ / "zero.wmf").GetStatus(), UndecodableContent);
}

TEST_F(Metafile, IsOnlyRead) {
    EXPECT_EQ(EmfCodec().write, nullptr);
    EXPECT_EQ(WmfCodec().write, nullptr);
}

} // namespace
