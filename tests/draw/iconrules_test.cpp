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

// The start of a file whose pixels begin at 54.
std::string StartWith(PixelSize size, int depth, int compression) {
    std::string start(34, '\0');
    const auto put = [&](std::size_t place, std::uint32_t number, std::size_t bytes) {
        for (std::size_t i = 0; i < bytes; ++i) {
            start[place + i] = static_cast<char>(number >> (8 * i));
        }
    };
    put(10, 54, 4);
    put(18, static_cast<std::uint32_t>(size.width), 4);
    put(22, static_cast<std::uint32_t>(size.height), 4);
    put(26, 1, 2);
    put(28, static_cast<std::uint32_t>(depth), 2);
    put(30, static_cast<std::uint32_t>(compression), 4);
    return start;
}

TEST(BitmapFile, HasAllPixelsWithAllItsRows) {
    EXPECT_TRUE(HasAllPixels(StartWith({3, 5}, 24, 0), 54 + 5 * 12));
    EXPECT_FALSE(HasAllPixels(StartWith({3, 5}, 24, 0), 54 + 5 * 12 - 1));
    EXPECT_TRUE(HasAllPixels(StartWith({33, -5}, 1, 0), 54 + 5 * 8)) << "the top row first";
    EXPECT_FALSE(HasAllPixels(StartWith({33, -5}, 1, 0), 54 + 5 * 8 - 1));
    EXPECT_TRUE(HasAllPixels(StartWith({3, 5}, 32, 3), 54 + 5 * 12)) << "with masks";
    EXPECT_FALSE(HasAllPixels(StartWith({3, 5}, 32, 3), 54 + 5 * 12 - 1));
}

TEST(BitmapFile, CompressedHasPixelsWhereAnyByteIsThere) {
    EXPECT_TRUE(HasAllPixels(StartWith({300, 500}, 8, 1), 55));
    EXPECT_FALSE(HasAllPixels(StartWith({300, 500}, 8, 1), 54));
}

TEST(BitmapFile, WithoutAreaOrDepthHasNoPixels) {
    EXPECT_FALSE(HasAllPixels(StartWith({0, 5}, 24, 0), 1000));
    EXPECT_FALSE(HasAllPixels(StartWith({-3, 5}, 24, 0), 1000));
    EXPECT_FALSE(HasAllPixels(StartWith({3, 0}, 24, 0), 1000));
    EXPECT_FALSE(HasAllPixels(StartWith({3, 5}, 0, 0), 1000));
    EXPECT_TRUE(HasAllPixels(StartWith({1, 1}, 1, 0), 58));
}

TEST(BitmapFile, OfHugeSizesLacksPixels) {
    EXPECT_FALSE(HasAllPixels(StartWith({0x7FFFFFFF, 0x7FFFFFFF}, 0xFFFF, 0), 0xFFFFFFFF));
    EXPECT_FALSE(HasAllPixels(StartWith({0x40000000, 0x40000000}, 32, 0), 1000)) << "2 to the power of 64 bits";
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
