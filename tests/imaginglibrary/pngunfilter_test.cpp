// Undoing the filters of PNG, against the rules of the standard and in all forms.
#include "imaginglibrary/codecs/png/pngunfilter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace {

using namespace imaginglibrary;

using FilteredBytes = std::vector<std::uint8_t>;

constexpr std::size_t AllPixelBytes[] = {1, 2, 3, 4, 6, 8};

// All values, and every third time those whose sums and differences run over.
FilteredBytes BytesToUnfilter(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    FilteredBytes bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random() % 3 == 0 ? random() % 2 * 255 : random());
    }
    return bytes;
}

// The predictor of the standard, in its order of ties: left, above, upper left.
int PaethOf(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

FilteredBytes UnfilteredByTheStandard(int filter, const FilteredBytes& filtered, const FilteredBytes& above,
                                      std::size_t pixelBytes) {
    FilteredBytes row = filtered;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int a = i >= pixelBytes ? row[i - pixelBytes] : 0;
        const int b = above[i];
        const int c = i >= pixelBytes ? above[i - pixelBytes] : 0;
        const int foretold[] = {0, a, b, (a + b) / 2, PaethOf(a, b, c)};
        row[i] = static_cast<std::uint8_t>(row[i] + foretold[filter]);
    }
    return row;
}

// For all lengths up to many times what is worked on at once. The bytes around the row must stay as they are.
template <class Unfilter> void ExpectTheStandards(int filter, std::size_t pixelBytes, Unfilter unfilter) {
    for (std::size_t pixels = 1; pixels < 70; ++pixels) {
        const std::size_t length = pixels * pixelBytes;
        const auto seed = static_cast<unsigned>(length * 10 + pixelBytes);
        const FilteredBytes filtered = BytesToUnfilter(length, seed);
        const FilteredBytes above = BytesToUnfilter(length, seed + 1);
        FilteredBytes bytes(length + 2, 99);
        std::copy(filtered.begin(), filtered.end(), bytes.begin() + 1);
        unfilter(static_cast<PngFilter>(filter), std::span(bytes).subspan(1, length), above.data(), pixelBytes);
        ASSERT_EQ(FilteredBytes(bytes.begin() + 1, bytes.end() - 1),
                  UnfilteredByTheStandard(filter, filtered, above, pixelBytes))
            << filter << ", " << pixelBytes << ", " << pixels;
        EXPECT_EQ(bytes.front(), 99);
        EXPECT_EQ(bytes.back(), 99);
    }
}

TEST(PngUnfiltering, FollowsTheStandardForEveryLength) {
    for (int filter = 0; filter <= 4; ++filter) {
        for (const std::size_t pixelBytes : AllPixelBytes) {
            ExpectTheStandards(filter, pixelBytes, UnfilterRow);
        }
    }
}

TEST(PngUnfiltering, FollowsTheStandardInTheScalarForm) {
    for (int filter = 0; filter <= 4; ++filter) {
        for (const std::size_t pixelBytes : AllPixelBytes) {
            ExpectTheStandards(filter, pixelBytes, UnfilterRowScalar);
        }
    }
}

#if defined(__SSE2__)
TEST(PngUnfiltering, FollowsTheStandardInTheSse2Form) {
    for (const int filter : {0, 1, 3, 4}) {
        for (const std::size_t pixelBytes : {3u, 4u, 6u, 8u}) {
            ExpectTheStandards(filter, pixelBytes, UnfilterRowSse2);
        }
    }
}

// Every left, above and upper left there is, at some distance, for it is the ties that are hard.
TEST(PngUnfiltering, ForetellsAlikeInAllForms) {
    FilteredBytes above, filtered;
    for (int upperLeft = 0; upperLeft < 256; upperLeft += 5) {
        for (int left = 0; left < 256; left += 3) {
            for (int up = 0; up < 256; up += 3) {
                const int first = left - PaethOf(0, upperLeft, 0);
                for (int channel = 0; channel < 4; ++channel) {
                    above.push_back(static_cast<std::uint8_t>(upperLeft));
                    filtered.push_back(static_cast<std::uint8_t>(first));
                }
                above.insert(above.end(), 4, static_cast<std::uint8_t>(up));
                filtered.insert(filtered.end(), 4, 0);
            }
        }
    }
    constexpr std::size_t TwoPixels = 8;
    FilteredBytes scalar = filtered, vector = filtered;
    for (std::size_t i = 0; i < filtered.size(); i += TwoPixels) {
        UnfilterRowScalar(PngFilter::Paeth, std::span(scalar).subspan(i, TwoPixels), &above[i], 4);
        UnfilterRowSse2(PngFilter::Paeth, std::span(vector).subspan(i, TwoPixels), &above[i], 4);
    }
    EXPECT_EQ(scalar, vector);
}
#endif

} // namespace
