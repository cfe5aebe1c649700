// What stands in a BMP file before its pixels.
#include "toolkit/bitmapfile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace lumbrix;

std::string HeaderOf(PixelSize size, PixelBytes pixelBytes) {
    const auto header = BitmapFileHeader(size, pixelBytes);
    return {header.begin(), header.end()};
}

// 258 pixels take 774 bytes, and a row 776; three of them 2328, which is 0x0918.
const std::string Expected("BM\x4E\x09\0\0\0\0\0\0\x36\0\0\0"
                           "\x28\0\0\0\x02\x01\0\0\x03\0\0\0\x01\0\x18\0\0\0\0\0\x18\x09\0\0"
                           "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0",
                           54);

TEST(BitmapFileHeader, HasEveryFieldInItsPlace) { EXPECT_EQ(HeaderOf({258, 3}, PixelBytes::Stated), Expected); }

TEST(BitmapFileHeader, MayLeaveOutTheBytesOfThePixels) {
    std::string expected = Expected;
    expected.replace(34, 4, 4, '\0');
    EXPECT_EQ(HeaderOf({258, 3}, PixelBytes::Omitted), expected);
}

TEST(BitmapFile, IsTheHeaderWithTheRowsBehind) {
    const std::vector<std::uint8_t> rows(2328, 0xAB);
    EXPECT_EQ(BitmapFile({258, 3}, rows, PixelBytes::Stated), Expected + std::string(2328, '\xAB'));
    EXPECT_EQ(BitmapFile({258, 3}, rows, PixelBytes::Omitted)[34], '\0');
}

TEST(BitmapRowBytes, AreAMultipleOfFour) {
    EXPECT_EQ(BitmapRowBytes(0), 0u);
    EXPECT_EQ(BitmapRowBytes(1), 4u);
    EXPECT_EQ(BitmapRowBytes(2), 8u);
    EXPECT_EQ(BitmapRowBytes(3), 12u);
    EXPECT_EQ(BitmapRowBytes(4), 12u);
    EXPECT_EQ(BitmapRowBytes(5), 16u);
}

} // namespace
