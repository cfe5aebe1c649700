// Image and mask taken out of pictures in memory, and written.
#include "draw/iconwriter.h"

#include "tests/draw/iconview.h"
#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/ownwindow.h"
#include "toolkit/offscreen.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace lumbrix;

constexpr PixelSize IconPixels{32, 32};

TEST(IconWriter, MaskIsOfThePictureAndImageOfTheMaskedOne) {
    const tests::TemporaryFolder folder;
    const OffscreenPicture picture(IconPixels, 24);
    const OffscreenPicture masked(IconPixels, 24);
    SetPixel(picture.Context(), 9, 4, RGB(197, 197, 197));
    SetPixel(masked.Context(), 30, 31, RGB(10, 20, 30));
    SetPixel(masked.Context(), 2, 2, RGB(197, 197, 197));
    WriteIconFile(nullptr, (folder / "a.ico").string(), picture.Context(), masked.Context());
    const tests::IconView icon(tests::ReadBytes(folder / "a.ico"));
    EXPECT_EQ(icon.CountTransparent(), 1);
    EXPECT_TRUE(icon.IsTransparent(9, 4));
    EXPECT_EQ(icon.At(30, 31), (tests::Rgb{10, 20, 30}));
    EXPECT_EQ(icon.At(2, 2), (tests::Rgb{197, 197, 197}));
    EXPECT_EQ(icon.At(9, 4), tests::Black);
}

TEST(IconHeaders, DescribeHeadAndMask) {
    const OffscreenPicture picture(IconPixels, 24);
    SetPixel(picture.Context(), 3, 5, RGB(197, 197, 197));
    BITMAPINFOHEADER header{};
    header.biSizeImage = 77;
    IconHead head;
    const MonochromePicture mask = InitIconHeaders(4, picture.Context(), header, head);
    ASSERT_TRUE(mask);
    EXPECT_EQ(head.colorCount, 16);
    EXPECT_EQ(head.bytesInResource, 744u);
    EXPECT_EQ(header.biSize, 40u);
    EXPECT_EQ(header.biWidth, 32);
    EXPECT_EQ(header.biHeight, 32);
    EXPECT_EQ(header.biPlanes, 1);
    EXPECT_EQ(header.biBitCount, 1);
    EXPECT_EQ(header.biClrUsed, 2u);
    EXPECT_EQ(header.biSizeImage, 0u);
    EXPECT_EQ(GetPixel(mask.Context(), 3, 5), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(mask.Context(), 4, 5), RGB(0, 0, 0));
    EXPECT_EQ(GetBkColor(picture.Context()), RGB(197, 197, 197));
    EXPECT_EQ(GetBkColor(mask.Context()), RGB(0, 0, 0));
}

TEST(IconBits, HaveAsMuchColorTableAsTheirDepth) {
    const OffscreenPicture picture(IconPixels, 24);
    const auto touched = [&](int bitCount) {
        constexpr std::uint8_t Untouched = 0xEE;
        IconImage image{};
        IconColors colors{};
        colors.fill(Untouched);
        GetIconBits(image, bitCount, picture.Context(), colors);
        const auto last = std::find_if(colors.rbegin(), colors.rend(), [](auto byte) { return byte != Untouched; });
        return colors.rend() - last;
    };
    EXPECT_EQ(touched(1), 8);
    EXPECT_EQ(touched(4), 64);
    EXPECT_EQ(touched(8), 1024);
    EXPECT_EQ(touched(24), 0);
}

TEST(IconBits, OfAPaletteDrawBlackAndWhite) {
    const OffscreenPicture picture(IconPixels, 24);
    SetPixel(picture.Context(), 0, 31, RGB(255, 255, 255));
    IconImage image{};
    IconColors colors{};
    GetIconBits(image, 1, picture.Context(), colors);
    EXPECT_EQ((std::vector<int>(colors.begin(), colors.begin() + 8)), (std::vector<int>{0, 0, 0, 0, 255, 255, 255, 0}));
    EXPECT_EQ(image[0], 0x80);
    EXPECT_EQ(image[1], 0);
}

TEST(FolderOfModule, IsThatOfTheProgramWithABackslash) {
    const tests::OwnWindow window(10, 10);
    char self[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, self, sizeof self);
    const std::string folder = FolderOfModule(window.Handle());
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder.back(), '\\');
    EXPECT_EQ(std::string(self).find(folder), 0u);
    EXPECT_EQ(std::string(self).substr(folder.size()), "iconmaker_test_windows.exe");
}

TEST(FolderOfModule, IsThatOfTheModuleThatMadeTheWindow) {
    const tests::OwnWindow window(10, 10);
    SetWindowLongPtrA(window.Handle(), GWLP_HINSTANCE, reinterpret_cast<LONG_PTR>(GetModuleHandleA("kernel32.dll")));
    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, sizeof system);
    EXPECT_EQ(lstrcmpiA(FolderOfModule(window.Handle()).c_str(), (std::string(system) + "\\").c_str()), 0);
}

} // namespace
