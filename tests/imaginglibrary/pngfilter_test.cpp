// The filters of PNG against the rules of the standard, byte by byte.
#include "imaginglibrary/codecs/png/pngfilter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace {

using namespace imaginglibrary;

using Bytes = std::vector<std::uint8_t>;

Bytes RandomBytes(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

// The predictor of the standard, in its order of ties: left, above, upper left.
int Predictor(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

std::uint8_t Expected(PngFilter filter, const Bytes& row, const Bytes& above, std::size_t pixelBytes, std::size_t i) {
    const int a = i >= pixelBytes ? row[i - pixelBytes] : 0;
    const int b = above[i];
    const int c = i >= pixelBytes ? above[i - pixelBytes] : 0;
    int foretold = 0;
    switch (filter) {
    case PngFilter::None:
        break;
    case PngFilter::Sub:
        foretold = a;
        break;
    case PngFilter::Up:
        foretold = b;
        break;
    case PngFilter::Average:
        foretold = (a + b) / 2;
        break;
    case PngFilter::Paeth:
        foretold = Predictor(a, b, c);
        break;
    }
    return static_cast<std::uint8_t>(row[i] - foretold);
}

// All lengths that a vector may leave a rest of, and rows of less than a pixel's bytes.
TEST(PngFilters, FollowTheStandardForEveryLength) {
    for (int number = 0; number <= 4; ++number) {
        const auto filter = static_cast<PngFilter>(number);
        for (const std::size_t pixelBytes : {1u, 3u, 4u}) {
            for (std::size_t length = 1; length < 140; ++length) {
                const Bytes row = RandomBytes(length, static_cast<unsigned>(length * 8 + pixelBytes));
                const Bytes above = RandomBytes(length, static_cast<unsigned>(length * 8 + pixelBytes + 4));
                Bytes filtered(length);
                FilterRow(filter, row, above.data(), pixelBytes, filtered.data());
                for (std::size_t i = 0; i < length; ++i) {
                    ASSERT_EQ(filtered[i], Expected(filter, row, above, pixelBytes, i))
                        << number << ", " << pixelBytes << ", " << length << ", " << i;
                }
            }
        }
    }
}

TEST(PngFilters, HaveTheNumbersOfTheStandard) {
    EXPECT_EQ(static_cast<int>(PngFilter::Sub), 1);
    EXPECT_EQ(static_cast<int>(PngFilter::Up), 2);
    EXPECT_EQ(static_cast<int>(PngFilter::Average), 3);
    EXPECT_EQ(static_cast<int>(PngFilter::Paeth), 4);
}

TEST(Entropy, OfBytesThatAreAllEqualIsNone) { EXPECT_EQ(EntropyOf(Bytes(100, 7)), 0); }

TEST(Entropy, IsTheBitsThatTellTheValuesApart) {
    EXPECT_DOUBLE_EQ(EntropyOf(Bytes{1, 2, 1, 2}), 4);                     // one bit each
    EXPECT_DOUBLE_EQ(EntropyOf(Bytes{0, 1, 2, 3, 4, 5, 6, 255}), 8 * 3.0); // three each
    EXPECT_NEAR(EntropyOf(Bytes{9, 9, 9, 200}), 3 * 0.41503749 + 2, 1e-6);
    EXPECT_EQ(EntropyOf(Bytes{}), 0);
}

} // namespace
