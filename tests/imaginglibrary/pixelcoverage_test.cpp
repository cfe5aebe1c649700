// Which pixels a mapped rectangle covers, and how much of them.
#include "imaginglibrary/operations/pixelcoverage.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace imaginglibrary;

constexpr PixelRun WideRow{-100, 100};

void ExpectRun(const PixelRun& run, std::int64_t first, std::int64_t end) {
    EXPECT_EQ(run.first, first);
    EXPECT_EQ(run.end, end);
}

TEST(PixelCoverage, UprightOnWholePixelsHasNoBorders) {
    const MappedRectangle rectangle(Affine::Translation(-3, -5), 10, 4);
    for (const std::int64_t y : {5, 8}) {
        ExpectRun(rectangle.Covered(y, WideRow), 3, 13);
        ExpectRun(rectangle.Touched(y, WideRow), 3, 13);
        ExpectRun(rectangle.Centred(y, WideRow), 3, 13);
    }
    for (const std::int64_t y : {4, 9}) {
        EXPECT_TRUE(rectangle.Touched(y, WideRow).IsEmpty());
        EXPECT_TRUE(rectangle.Covered(y, WideRow).IsEmpty());
    }
}

TEST(PixelCoverage, UprightBetweenPixelsHasBordersOfOne) {
    const MappedRectangle rectangle(Affine::Translation(-3.25, -5.5), 10, 4);
    ExpectRun(rectangle.Covered(6, WideRow), 4, 13);
    ExpectRun(rectangle.Touched(6, WideRow), 3, 14);
    ExpectRun(rectangle.Centred(6, WideRow), 3, 13);
    EXPECT_NEAR(rectangle.CoverageOf(3, 6), 0.75, 1e-9);
    EXPECT_NEAR(rectangle.CoverageOf(13, 6), 0.25, 1e-9);
    EXPECT_NEAR(rectangle.CoverageOf(3, 5), 0.375, 1e-9);
    EXPECT_NEAR(rectangle.CoverageOf(6, 6), 1, 1e-9);
    EXPECT_EQ(rectangle.CoverageOf(14, 6), 0);
    EXPECT_EQ(rectangle.CoverageOf(6, 10), 0);
}

TEST(PixelCoverage, RunThatEndsWhereItBeginsIsEmpty) {
    EXPECT_TRUE((PixelRun{3, 3}.IsEmpty()));
    EXPECT_TRUE((PixelRun{4, 3}.IsEmpty()));
    EXPECT_FALSE((PixelRun{3, 4}.IsEmpty()));
}

TEST(PixelCoverage, RunsStayWithinTheRow) {
    const MappedRectangle rectangle(Affine::Scaling(1e-6, 1e-6), 10, 10);
    ExpectRun(rectangle.Covered(50, {7, 20}), 7, 20);
    ExpectRun(rectangle.Touched(50, {7, 20}), 7, 20);
    EXPECT_TRUE(rectangle.Touched(50, {-20, -7}).IsEmpty());
}

TEST(PixelCoverage, SlantedAreaIsExactAndRunsHoldIt) {
    for (const double degrees : {10.0, 45.0, 90.0, 137.0, -120.0}) {
        const Affine toSurface = Affine::Scaling(1.5, 1.5)
                                     .Then(Affine::Rotation(degrees * std::numbers::pi / 180))
                                     .Then({1, 0, 0, 1, 0.3, 0.7});
        const MappedRectangle rectangle(*toSurface.Inverse(), 20, 12);
        double area = 0;
        for (std::int64_t y = -60; y < 60; ++y) {
            const PixelRun touched = rectangle.Touched(y, WideRow);
            const PixelRun covered = rectangle.Covered(y, WideRow);
            for (std::int64_t x = -60; x < 60; ++x) {
                const double coverage = rectangle.CoverageOf(x, y);
                area += coverage;
                const bool isTouched = x >= touched.first && x < touched.end;
                const bool isCovered = x >= covered.first && x < covered.end;
                EXPECT_TRUE(isTouched || coverage < 1e-5) << x << "," << y;
                EXPECT_EQ(isCovered, coverage > 1 - 1e-7) << x << "," << y;
            }
        }
        EXPECT_NEAR(area, 1.5 * 1.5 * 20 * 12, 1e-6) << degrees;
    }
}

} // namespace
