// The parts of resampling: what new samples are made of, and the sums in their plain and quick forms.
#include "imaginglibrary/operations/resamplerows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>

namespace {

using namespace imaginglibrary;

std::vector<int> WeightsOf(const ResampleKernel& kernel, std::size_t i) {
    return {kernel.Weights(i), kernel.Weights(i) + kernel.Taps()};
}

TEST(ResampleKernel, EnlargesLinearlyBetweenNeighbours) {
    const ResampleKernel kernel(2, 4, Resampling::Linear);
    ASSERT_EQ(kernel.Count(), 4u);
    ASSERT_EQ(kernel.Taps(), 4u);
    EXPECT_EQ(WeightsOf(kernel, 0), (std::vector{16384, 0, 0, 0})) << "there is nothing to the left";
    EXPECT_EQ(WeightsOf(kernel, 1), (std::vector{12288, 4096, 0, 0}));
    EXPECT_EQ(WeightsOf(kernel, 2), (std::vector{4096, 12288, 0, 0}));
    EXPECT_EQ(kernel.First(3), 1u);
    EXPECT_EQ(kernel.End(3), 2u);
}

TEST(ResampleKernel, WeightsAreRoundedToTheNearest) {
    const ResampleKernel kernel(3, 5, Resampling::Linear);
    EXPECT_EQ(WeightsOf(kernel, 1), (std::vector{9830, 6554, 0, 0})) << "0.6 and 0.4";
    EXPECT_EQ(WeightsOf(kernel, 2), (std::vector{0, 16384, 0, 0}));
    EXPECT_EQ(WeightsOf(kernel, 3), (std::vector{6554, 9830, 0, 0}));
}

TEST(ResampleKernel, EnlargesByCubicConvolution) {
    // Halfway between the two in the middle of four.
    const ResampleKernel kernel(6, 12, Resampling::Smooth);
    EXPECT_EQ(kernel.First(5), 1u);
    const std::vector<int> weights = WeightsOf(kernel, 5); // at 2.25
    EXPECT_NEAR(weights[0], -0.0703125 * 16384, 1);
    EXPECT_NEAR(weights[1], 0.8671875 * 16384, 1);
    EXPECT_NEAR(weights[2], 0.2265625 * 16384, 1);
    EXPECT_NEAR(weights[3], -0.0234375 * 16384, 1);
}

TEST(ResampleKernel, ShrinksByThreeLobes) {
    const ResampleKernel kernel(60, 30, Resampling::Smooth);
    EXPECT_EQ(kernel.Taps(), 12u);
    EXPECT_EQ(kernel.First(15), 25u); // those around 30.5, up to six away
    EXPECT_EQ(kernel.End(15), 37u);
    // sinc(x) sinc(x / 3) at 0.25, 0.75, 1.25, 1.75, 2.25, 2.75, over twice their sum
    constexpr std::array lobes{0.89007, 0.27019, -0.13287, -0.06779, 0.03002, 0.00736};
    const std::vector<int> weights = WeightsOf(kernel, 15);
    const double sum = 2 * std::accumulate(lobes.begin(), lobes.end(), 0.0);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_NEAR(weights[6 + i], lobes[i] / sum * 16384, 2) << i;
        EXPECT_NEAR(weights[5 - i], lobes[i] / sum * 16384, 2) << i;
    }
}

TEST(ResampleKernel, NearestTakesTheSampleInTheMiddle) {
    const ResampleKernel kernel(5, 3, Resampling::Nearest);
    for (const auto& [at, first] : {std::pair(0u, 0u), std::pair(1u, 2u), std::pair(2u, 4u)}) {
        EXPECT_EQ(kernel.First(at), first);
        EXPECT_EQ(kernel.End(at), first + 1);
        EXPECT_EQ(WeightsOf(kernel, at), (std::vector{16384, 0, 0, 0}));
    }
}

TEST(ResampleKernel, WeightsAddUpToOneAlsoWhereEachIsFarBelow) {
    for (const auto& [source, target] : {std::pair(7, 3), std::pair(3, 7), std::pair(1, 50), std::pair(50, 1),
                                         std::pair(60000, 1), std::pair(40000, 3)}) {
        for (const Resampling resampling : {Resampling::Smooth, Resampling::Linear, Resampling::Nearest}) {
            const ResampleKernel kernel(source, static_cast<std::uint32_t>(target), resampling);
            EXPECT_EQ(kernel.Taps() % 4, 0u);
            for (std::size_t i = 0; i < kernel.Count(); ++i) {
                const std::vector<int> weights = WeightsOf(kernel, i);
                EXPECT_EQ(std::accumulate(weights.begin(), weights.end(), 0), 16384);
                EXPECT_LE(kernel.End(i), static_cast<std::uint32_t>(source));
                EXPECT_LE(kernel.End(i) - kernel.First(i), kernel.Taps());
            }
        }
    }
}

TEST(ResampleKernel, SmallWeightsStandWhereTheyBelong) {
    // Half a unit each: the halves count the same, and the middle as much as its share of the lobe.
    const ResampleKernel kernel(30000, 1, Resampling::Smooth);
    const std::vector<int> weights = WeightsOf(kernel, 0);
    EXPECT_NEAR(std::accumulate(weights.begin(), weights.begin() + 15000, 0), 8192, 1);
    EXPECT_NEAR(std::accumulate(weights.begin() + 13000, weights.begin() + 17000, 0), 2530, 1);
}

TEST(ResampleKernel, LeavesOutASampleThatLiesMostlyOutside) {
    for (const auto& [extent, end] : {std::pair(20.125, 20u), std::pair(20.5, 20u), std::pair(20.625, 21u)}) {
        const ResampleKernel kernel(extent, 10, Resampling::Smooth);
        EXPECT_EQ(kernel.End(9), end) << extent;
    }
    EXPECT_EQ(ResampleKernel(0.125, 1, Resampling::Smooth).End(0), 1u) << "but there must be one";
}

std::vector<ResampleForms> QuickForms() {
#if defined(__SSE2__)
    std::vector<ResampleForms> forms{ResampleSse2};
    if (__builtin_cpu_supports("avx2")) {
        forms.push_back(ResampleAvx2);
    }
    return forms;
#else
    return {};
#endif
}

using ByteRow = std::vector<std::uint8_t>;
using NarrowedRow = std::vector<std::int16_t>;

// Noise, or nothing but the ends of the scale, which overshoots most.
ByteRow NoisyRow(std::size_t bytes, unsigned seed, bool isExtreme) {
    std::mt19937 noise(seed);
    ByteRow row(bytes);
    for (std::uint8_t& byte : row) {
        byte = static_cast<std::uint8_t>(isExtreme ? (noise() & 1) * 255 : noise() & 255);
    }
    return row;
}

std::array<NarrowedRow, 2> NarrowedBy(const ResampleForms& forms, const std::array<ByteRow, 2>& rows,
                                      const ResampleKernel& kernel) {
    std::array<NarrowedRow, 2> narrowed;
    for (NarrowedRow& row : narrowed) {
        row.assign(kernel.Count() * 4 + 4, 1234);
    }
    forms.narrowRows({rows[0].data(), rows[1].data()}, kernel, {narrowed[0].data(), narrowed[1].data()});
    for (NarrowedRow& row : narrowed) {
        EXPECT_EQ(std::vector(row.end() - 4, row.end()), NarrowedRow(4, 1234)) << "behind the last pixel";
        row.resize(kernel.Count() * 4);
    }
    return narrowed;
}

TEST(ResampleRows, NarrowingIsTheWeightedSumInEveryForm) {
    for (const auto& [source, target] :
         {std::pair(37u, 10u), std::pair(37u, 36u), std::pair(5u, 9u), std::pair(64u, 1u)}) {
        for (const bool isExtreme : {false, true}) {
            const ResampleKernel kernel(source, target, Resampling::Smooth);
            const std::size_t room = (source + kernel.Taps()) * 4;
            const std::array rows{NoisyRow(room, 1, isExtreme), NoisyRow(room, 2, isExtreme)};
            const auto plain = NarrowedBy(ResampleScalar, rows, kernel);
            for (std::size_t row = 0; row < 2; ++row) {
                for (std::size_t at = 0; at < plain[row].size(); ++at) {
                    double sum = 0;
                    for (std::size_t tap = 0; tap < kernel.Taps(); ++tap) {
                        sum += kernel.Weights(at / 4)[tap] / 16384.0 *
                               rows[row][(kernel.First(at / 4) + tap) * 4 + at % 4];
                    }
                    ASSERT_NEAR(plain[row][at], sum * 64, 0.5001);
                }
            }
            for (const ResampleForms& forms : QuickForms()) {
                EXPECT_EQ(NarrowedBy(forms, rows, kernel), plain);
            }
        }
    }
}

ByteRow SummedBy(const ResampleForms& forms, const std::vector<NarrowedRow>& rows,
                 const std::vector<std::int16_t>& weights) {
    std::vector<const std::int16_t*> places;
    for (const NarrowedRow& row : rows) {
        places.push_back(row.data());
    }
    ByteRow summed(rows[0].size() + 4, 0xA5);
    forms.sumRows(places.data(), weights.data(), rows.size(), summed.data(), rows[0].size() / 4);
    EXPECT_EQ(ByteRow(summed.end() - 4, summed.end()), ByteRow(4, 0xA5)) << "behind the last pixel";
    summed.resize(rows[0].size());
    return summed;
}

TEST(ResampleRows, SumsAreWithinTheScaleAndNoColorAboveItsAlphaInEveryForm) {
    for (const std::size_t pixels : {4u, 8u, 36u}) {
        std::mt19937 noise(9);
        std::vector<NarrowedRow> rows(6, NarrowedRow(pixels * 4));
        for (NarrowedRow& row : rows) {
            for (std::int16_t& value : row) {
                value = static_cast<std::int16_t>(noise() % 26000 - 5000);
            }
        }
        const std::vector<std::int16_t> weights{-1500, 4000, 9000, 6500, -2000, 384};
        const ByteRow plain = SummedBy(ResampleScalar, rows, weights);
        for (std::size_t at = 0; at < plain.size(); ++at) {
            double sum = 0;
            for (std::size_t i = 0; i < rows.size(); ++i) {
                sum += weights[i] / 16384.0 * rows[i][at] / 64;
            }
            const double most = at % 4 == 3 ? 255 : plain[at / 4 * 4 + 3];
            ASSERT_NEAR(plain[at], std::clamp(sum, 0.0, most), 0.5001);
        }
        for (const ResampleForms& forms : QuickForms()) {
            EXPECT_EQ(SummedBy(forms, rows, weights), plain);
        }
    }
}

TEST(ResampleRows, SumsAreRoundedToTheNearest) {
    // Half a unit goes up, a little less goes down.
    std::vector<NarrowedRow> rows(2, NarrowedRow(16, 0));
    std::fill(rows[0].begin(), rows[0].end(), 255 * 64);
    rows[0][0] = 100 * 64 + 32;
    rows[0][1] = 100 * 64 + 31;
    for (const ResampleForms& forms : QuickForms()) {
        const ByteRow summed = SummedBy(forms, rows, {16384, 0});
        EXPECT_EQ(summed[0], 101);
        EXPECT_EQ(summed[1], 100);
        EXPECT_EQ(summed[2], 255);
    }
}

} // namespace
