// The start of a bitmap file, and its picture at the size of an icon.
#include "draw/iconbitmap.h"

#include "base/geometry.h"
#include "platform/errors.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

class IconBitmap : public testing::Test {
  protected:
    std::string Write(const std::string& bytes) const {
        tests::WriteBytes(folder_ / "picture.bmp", bytes);
        return (folder_ / "picture.bmp").string();
    }

    static std::string WhiteBmp(int width, int height) {
        return tests::MakeBmp(width, height, [](int, int) { return tests::White; });
    }

    static PixelSize SizeIn(const LoadedPicture& picture) {
        BITMAP facts{};
        GetObjectA(GetCurrentObject(picture.context.Get(), OBJ_BITMAP), sizeof facts, &facts);
        return {facts.bmWidth, facts.bmHeight};
    }

    tests::TemporaryFolder folder_;
};

TEST_F(IconBitmap, StartOfAFileIsNoLongerThanNeeded) {
    EXPECT_EQ(StartOfFile(Write("abcdefghijklmnopqrstuvwxyz0123456789")), "abcdefghijklmnopqrstuvwxyz01234567");
    EXPECT_EQ(StartOfFile(Write("abc")), "abc");
    EXPECT_EQ(StartOfFile(Write("")), "");
}

TEST_F(IconBitmap, StartIsReadWhileAnotherProgramHasTheFileOpen) {
    const std::string path = Write("abc");
    const OwnedFile held(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(StartOfFile(path), "abc");
}

TEST_F(IconBitmap, FolderHasNoStart) {
    const auto error = trap([&] { StartOfFile(folder_.Path().string()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), ERROR_ACCESS_DENIED);
}

TEST_F(IconBitmap, PictureOfTheIconsSizeIsNotStretched) {
    const LoadedPicture picture = LoadIconPicture(Write(WhiteBmp(32, 32)));
    EXPECT_EQ(SizeIn(picture), (PixelSize{32, 32}));
    EXPECT_EQ(GetStretchBltMode(picture.context.Get()), BLACKONWHITE) << "as it is at first";
}

TEST_F(IconBitmap, OtherPicturesAreStretchedInHalftones) {
    for (const PixelSize size : {PixelSize{33, 32}, {32, 33}, {31, 31}}) {
        const LoadedPicture picture = LoadIconPicture(Write(WhiteBmp(size.width, size.height)));
        EXPECT_EQ(SizeIn(picture), (PixelSize{32, 32}));
        EXPECT_EQ(GetStretchBltMode(picture.context.Get()), HALFTONE);
        EXPECT_EQ(GetPixel(picture.context.Get(), 31, 31), RGB(255, 255, 255));
    }
}

TEST_F(IconBitmap, WhatIsNotLoadedHasNoContext) {
    EXPECT_FALSE(LoadIconPicture(Write("no bitmap")).context);
    EXPECT_FALSE(LoadIconPicture((folder_ / "none.bmp").string()).context);
}

} // namespace
