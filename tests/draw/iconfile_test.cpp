// The bytes of an icon file.
#include "draw/iconfile.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

// The 66 bytes before the image.
constexpr std::uint8_t BytesBeforeImage[] = {
    0,    0,    1,    0,    1,  0,                    // an icon file with one picture
    32,   32,   0,    0,    0,  0, 0, 0,              // width, height, colours, reserved, planes, bits
    0xAC, 0x0C, 0,    0,    22, 0, 0, 0,              // 3244 bytes from 22 on
    40,   0,    0,    0,    32, 0, 0, 0, 64, 0, 0, 0, // header bytes, width, height of image and mask
    1,    0,    24,   0,    0,  0, 0, 0,              // planes, bits, compression
    0x81, 0x04, 0,    0,                              // 1153
    0,    0,    0,    0,    0,  0, 0, 0,              // pixels per metre
    1,    0,    0,    0,    0,  0, 0, 0,              // colours used, important ones
    0x20, 0x20, 0x20, 0x20,
};

std::string Text(const auto& bytes) { return {std::begin(bytes), std::end(bytes)}; }

// An image and a mask in which no two neighbours are alike.
IconImage SomeImage() {
    IconImage image{};
    for (std::size_t i = 0; i < image.size(); ++i) {
        image[i] = static_cast<std::uint8_t>(i * 7 % 251);
    }
    return image;
}

IconMask SomeMask() {
    IconMask mask{};
    for (std::size_t i = 0; i < mask.size(); ++i) {
        mask[i] = static_cast<std::uint8_t>(255 - i);
    }
    return mask;
}

TEST(IconFile, IsMadeOfHeadImageAndMask) {
    static_assert(sizeof(BytesBeforeImage) == 66);
    const std::string file = IconFile(IconHeadFor(24), SomeImage(), SomeMask());
    ASSERT_EQ(file.size(), 3266u);
    EXPECT_EQ(file.substr(0, 66), Text(BytesBeforeImage));
    EXPECT_EQ(file.substr(66, 3072), Text(SomeImage()));
    EXPECT_EQ(file.substr(3138), Text(SomeMask()));
}

TEST(IconFile, CarriesEveryFieldOfTheHeadButItsBytesInTheResource) {
    IconHead head;
    head.reserved = 0x0102;
    head.type = 0x0304;
    head.count = 0x0506;
    head.width = 0x07;
    head.height = 0x08;
    head.colorCount = 0x09;
    head.entryReserved = 0x0A;
    head.planes = 0x0B0C;
    head.bitCount = 0x0D0E;
    head.bytesInResource = 0x0F101112;
    head.imageOffset = 0x13141516;
    EXPECT_EQ(IconFile(head, {}, {}).substr(0, 22),
              std::string("\x02\x01\x04\x03\x06\x05\x07\x08\x09\x0A\x0C\x0B\x0E\x0D\xAC\x0C\0\0\x16\x15\x14\x13", 22));
}

TEST(IconHead, StatesTheBytesOf16Colors) {
    for (const int bitCount : {1, 4, 8, 24}) {
        EXPECT_EQ(IconHeadFor(bitCount).bytesInResource, 744u) << bitCount;
    }
}

TEST(IconHead, CountsColorsFor4BitsOnly) {
    EXPECT_EQ(IconHeadFor(4).colorCount, 16);
    for (const int bitCount : {1, 8, 24}) {
        EXPECT_EQ(IconHeadFor(bitCount).colorCount, 0) << bitCount;
    }
}

TEST(IconColorTable, HasFourBytesAColor) {
    EXPECT_EQ(ColorTableBytes(1), 8u);
    EXPECT_EQ(ColorTableBytes(4), 64u);
    EXPECT_EQ(ColorTableBytes(8), 1024u);
    EXPECT_EQ(ColorTableBytes(24), 0u);
}

TEST(IconColorTable, KeyColorIsAGrey) { EXPECT_EQ(IconKeyColor, 0x00C5C5C5u); }

} // namespace
