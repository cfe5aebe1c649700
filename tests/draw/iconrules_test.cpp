// Which bitmap files become icons, and under what name.
#include "draw/iconrules.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

// The start of a bitmap file: the signature, a header size of 40 at 14, and other numbers at 18 and 22.
std::string BitmapStart(const std::string& width, const std::string& height) {
    return "BM" + std::string(12, 'x') + std::string("\x28\0\0\0", 4) + width + height;
}

TEST(SizeInBitmapFile, StandsAtItsPlacesWithTheLowByteFirst) {
    EXPECT_EQ(SizeInBitmapFile(BitmapStart("\x04\x03\x02\x01", "\x08\x07\x06\x05") + "zzzz"),
              (PixelSize{0x01020304, 0x05060708}));
}

TEST(SizeInBitmapFile, MayBeNegative) {
    EXPECT_EQ(SizeInBitmapFile(BitmapStart(std::string("\x20\0\0\0", 4), "\xE0\xFF\xFF\xFF")), (PixelSize{32, -32}));
}

TEST(SizeInBitmapFile, DoesNotLookAtTheKindOfFile) {
    EXPECT_EQ(SizeInBitmapFile(std::string(18, 'x') + std::string("\x01\0\0\0\x02\0\0\0", 8)), (PixelSize{1, 2}));
}

TEST(SizeInBitmapFile, TakesWhatIsMissingForZeros) {
    EXPECT_EQ(SizeInBitmapFile(""), (PixelSize{0, 0}));
    EXPECT_EQ(SizeInBitmapFile(std::string(18, 'x')), (PixelSize{0, 0}));
    EXPECT_EQ(SizeInBitmapFile(BitmapStart("\x01\x01\x01\x01", "\x02\x02\x02")), (PixelSize{0x01010101, 0x00020202}));
}

TEST(BitmapFile, BeginsWithItsSignatureAndAHeaderOf40BytesOrMore) {
    const std::string bitmap = BitmapStart("wwww", "hhhh");
    const auto withHeaderOf = [&](char bytes) { return std::string(bitmap).replace(14, 1, 1, bytes); };
    EXPECT_TRUE(IsBitmapFile(bitmap));
    EXPECT_TRUE(IsBitmapFile(withHeaderOf(124)));
    EXPECT_FALSE(IsBitmapFile(withHeaderOf(39)));
    EXPECT_FALSE(IsBitmapFile(withHeaderOf(12))) << "sizes of 16 bits";
    EXPECT_FALSE(IsBitmapFile(std::string(bitmap).replace(0, 2, "BA")));
    EXPECT_FALSE(IsBitmapFile(std::string(bitmap).replace(0, 2, "MM")));
    EXPECT_FALSE(IsBitmapFile("BM"));
    EXPECT_FALSE(IsBitmapFile(""));
}

TEST(IconPath, ReplacesTheLastThreeCharacters) {
    EXPECT_EQ(IconPath("C:\\pictures\\photo.bmp"), "C:\\pictures\\photo.ico");
    EXPECT_EQ(IconPath("two.dots.BMP"), "two.dots.ico");
}

TEST(IconPath, OfAnExtensionOfAnotherLengthKeepsOrTakesWhatStandsThere) {
    EXPECT_EQ(IconPath("photo.jpeg"), "photo.jico");
    EXPECT_EQ(IconPath("photo.tf"), "photoico");
    EXPECT_EQ(IconPath("photo"), "phico");
}

TEST(IconPath, OfShortPathsIsTheExtensionAlone) {
    EXPECT_EQ(IconPath("abcd"), "aico");
    EXPECT_EQ(IconPath("abc"), "ico");
    EXPECT_EQ(IconPath("ab"), "ico");
    EXPECT_EQ(IconPath(""), "ico");
}

TEST(NotSquare, NamesWidthBeforeHeight) {
    EXPECT_EQ(NotSquareText({640, 480}), "The image (640 x 480) is not a square and cannot be sized to 32 x 32");
    EXPECT_EQ(NotSquareText({32, -32}), "The image (32 x -32) is not a square and cannot be sized to 32 x 32");
    EXPECT_STREQ(IconTitle, "Quorvane");
}

} // namespace
