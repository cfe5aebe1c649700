// The form of snapshots, byte by byte.
#include "draw/canvasbits.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace lumbrix;

std::string BlankCanvasBits(PixelSize size) {
    return CanvasBitsOf(size, std::vector<std::uint8_t>(CanvasPixelBytes(size)));
}

TEST(CanvasBits, BeginWithTheSizeAndHaveFourBytesAPixel) {
    EXPECT_EQ(BlankCanvasBits({3, 2}), std::string("\3\0\0\0\2\0\0\0", 8) + std::string(24, '\0'));
    EXPECT_EQ(BlankCanvasBits({258, 1}).substr(0, 8), std::string("\2\1\0\0\1\0\0\0", 8));
}

TEST(CanvasBits, PixelsStandBehindTheSize) {
    const std::vector<std::uint8_t> pixels{'a', 'b', 'c', 'd'};
    std::string bits = CanvasBitsOf({1, 1}, pixels);
    EXPECT_EQ(bits, std::string("\1\0\0\0\1\0\0\0abcd", 12));
    EXPECT_EQ(std::string(PixelsOfCanvasBits(bits), 4), "abcd");
}

TEST(CanvasBits, TellTheirSize) { EXPECT_EQ(SizeOfCanvasBits(BlankCanvasBits({70000, 3})), (PixelSize{70000, 3})); }

TEST(CanvasBits, WithTooFewOrTooManyPixelsHaveNoSize) {
    std::string bits = BlankCanvasBits({3, 2});
    bits.push_back('\0');
    EXPECT_EQ(SizeOfCanvasBits(bits), (PixelSize{0, 0}));
    bits.resize(bits.size() - 2);
    EXPECT_EQ(SizeOfCanvasBits(bits), (PixelSize{0, 0}));
}

TEST(CanvasBits, ThatAreTooShortForASizeHaveNone) {
    EXPECT_EQ(SizeOfCanvasBits(""), (PixelSize{0, 0}));
    EXPECT_EQ(SizeOfCanvasBits(std::string("\0\0\0\0\5\0\0", 7)), (PixelSize{0, 0}));
}

TEST(CanvasBits, OfACanvasWithoutAnAreaAreTheSizeAlone) {
    for (const PixelSize size :
         {PixelSize{0, 5}, PixelSize{5, 0}, PixelSize{-1, 5}, PixelSize{5, -1}, PixelSize{-1, -1}}) {
        EXPECT_EQ(BlankCanvasBits(size).size(), 8u);
        EXPECT_EQ(SizeOfCanvasBits(BlankCanvasBits(size)), size);
    }
}

} // namespace
