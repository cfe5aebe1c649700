// Pixels of less than a byte, spread out and packed.
#include "imaginglibrary/core/packing.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace imaginglibrary;

TEST(Packing, LeftmostPixelLiesInTheMostSignificantBits) {
    const std::uint8_t row[] = {0b10110001, 0x4F};
    EXPECT_EQ(PackedAt(row, 0, 1), 1);
    EXPECT_EQ(PackedAt(row, 1, 1), 0);
    EXPECT_EQ(PackedAt(row, 7, 1), 1);
    EXPECT_EQ(PackedAt(row, 1, 2), 3);
    EXPECT_EQ(PackedAt(row, 4, 2), 1);
    EXPECT_EQ(PackedAt(row, 2, 4), 4);
    EXPECT_EQ(PackedAt(row, 3, 4), 15);
    EXPECT_EQ(PackedAt(row, 1, 8), 0x4F);
}

TEST(Packing, PutChangesOnePixelOnly) {
    std::uint8_t row[] = {0xFF, 0xFF};
    PutPacked(row, 2, 1, 0);
    EXPECT_EQ(row[0], 0xDF);
    PutPacked(row, 7, 2, 1);
    EXPECT_EQ(row[1], 0xFD);
    PutPacked(row, 3, 4, 2);
    EXPECT_EQ(row[1], 0xF2);
    EXPECT_EQ(row[0], 0xDF);
}

TEST(Packing, UnpackingStartsAtAnyPixelAndPackingFillsUpWithZeros) {
    const std::uint8_t row[] = {0x12, 0x34, 0x56};
    std::vector<std::uint8_t> values(3);
    UnpackPixels(row, 1, 4, values.data(), values.size());
    EXPECT_EQ(values, (std::vector<std::uint8_t>{2, 3, 4}));
    std::uint8_t packed[] = {0xAA, 0xAA, 0xAA};
    PackPixels(values.data(), 4, packed, values.size());
    EXPECT_EQ(packed[0], 0x23);
    EXPECT_EQ(packed[1], 0x40);
    EXPECT_EQ(packed[2], 0xAA) << "nothing is touched behind the row";
}

} // namespace
