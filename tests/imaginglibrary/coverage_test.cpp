// How much of every pixel lies inside an outline, and filling with it.
#include "imaginglibrary/operations/coverage.h"

#include "imaginglibrary/operations/fill.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <numbers>
#include <numeric>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::int64_t CoverageSide = 40;

std::vector<Edge> EdgesOf(const Path& path, const Affine& map = {}) {
    std::vector<Edge> edges;
    path.AppendEdges(map, edges);
    return edges;
}

Path Rectangle(double left, double top, double right, double bottom) {
    Path path;
    path.AddRectangle({left, top}, {right, bottom});
    return path;
}

// Coverage of every pixel of a square with CoverageSide pixels a side.
std::vector<int> CoverageOf(const std::vector<Edge>& edges) {
    std::vector<int> all(CoverageSide * CoverageSide);
    ForEachCoveredRow(edges, {0, 0, CoverageSide, CoverageSide},
                      [&](std::int64_t x, std::int64_t y, const std::uint8_t* coverage, std::size_t count) {
                          std::copy_n(coverage, count, all.begin() + y * CoverageSide + x);
                      });
    return all;
}

double AreaOf(const std::vector<int>& coverage) { return std::accumulate(coverage.begin(), coverage.end(), 0) / 255.0; }

TEST(Coverage, WholePixelsAreCoveredWhole) {
    const auto coverage = CoverageOf(EdgesOf(Rectangle(3, 4, 7, 9)));
    for (std::int64_t y = 0; y < CoverageSide; ++y) {
        for (std::int64_t x = 0; x < CoverageSide; ++x) {
            const bool isInside = x >= 3 && x < 7 && y >= 4 && y < 9;
            EXPECT_EQ(coverage[static_cast<std::size_t>(y * CoverageSide + x)], isInside ? 255 : 0) << x << "," << y;
        }
    }
}

TEST(Coverage, PartsOfPixelsCountByTheirArea) {
    const auto coverage = CoverageOf(EdgesOf(Rectangle(2.25, 3.5, 2.75, 5)));
    EXPECT_EQ(coverage[3 * CoverageSide + 2], 64);  // a quarter
    EXPECT_EQ(coverage[4 * CoverageSide + 2], 128); // a half
    EXPECT_EQ(coverage[4 * CoverageSide + 3], 0);
}

TEST(Coverage, SlantedShapesKeepTheirArea) {
    Path triangle;
    triangle.MoveTo({2.3, 1.7});
    triangle.LineTo({33.9, 12.2});
    triangle.LineTo({8.1, 30.4});
    const double area = 0.5 * std::abs((33.9 - 2.3) * (30.4 - 1.7) - (8.1 - 2.3) * (12.2 - 1.7));
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(triangle))), area, 0.5);
}

TEST(Coverage, EllipsesAreRound) {
    Path path;
    path.AddEllipse({5, 10}, {35, 30});
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(path))), std::numbers::pi * 15 * 10, 0.6);
}

TEST(Coverage, ReversedContourCutsAHoleAndASecondOfTheSameDirectionUnites) {
    Path ring;
    ring.AddEllipse({5, 5}, {35, 35});
    ring.AddEllipse({10, 10}, {30, 30}, true);
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(ring))), std::numbers::pi * (15 * 15 - 10 * 10), 0.8);
    Path both = Rectangle(5, 5, 20, 20);
    both.AddRectangle({10, 10}, {30, 30});
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(both))), 15 * 15 + 20 * 20 - 10 * 10, 0.01);
}

TEST(Coverage, DirectionOfAnOutlineDoesNotMatter) {
    Path reversed;
    reversed.AddEllipse({5, 10}, {35, 30}, true);
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(reversed))), std::numbers::pi * 15 * 10, 0.6);
}

TEST(Coverage, ShapesThatReachBeyondEverySideAreCut) {
    EXPECT_EQ(AreaOf(CoverageOf(EdgesOf(Rectangle(-1e6, -1e6, 1e6, 1e6)))), CoverageSide * CoverageSide);
    EXPECT_EQ(AreaOf(CoverageOf(EdgesOf(Rectangle(-500, 10, 20, 20)))), 200);
    EXPECT_EQ(AreaOf(CoverageOf(EdgesOf(Rectangle(100, 10, 200, 20)))), 0);
    Path slanted;
    slanted.MoveTo({-100, 0});
    slanted.LineTo({100, 0});
    slanted.LineTo({100, 100});
    // Its lower border crosses the square from the top left corner to the middle of the right side.
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(slanted, Affine::Translation(0, -50)))), CoverageSide * CoverageSide / 4.0,
                0.5);
}

TEST(Coverage, NothingIsCalledForNothing) {
    int calls = 0;
    ForEachCoveredRow({}, {0, 0, 5, 5}, [&](auto, auto, auto, auto) { ++calls; });
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(BoundsOf({}).IsEmpty());
}

TEST(Fill, HardEdgesColorWholePixelsOnly) {
    auto bitmap = *Bitmap::Create({.width = 10, .height = 10, .format = PixelFormat::Rgb24});
    Canvas canvas{*bitmap};
    Fill(canvas, EdgesOf(Rectangle(2.4, 2, 6.4, 8)), MakeColor(255, 255, 255), Edges::Hard);
    for (const Color color : ColorsOf(*bitmap)) {
        EXPECT_TRUE(color == MakeColor(0, 0, 0) || color == MakeColor(255, 255, 255));
    }
    EXPECT_EQ(RedOf(ColorsOf(*bitmap)[5 * 10 + 2]), 255);
    EXPECT_EQ(RedOf(ColorsOf(*bitmap)[5 * 10 + 6]), 0);
}

TEST(Fill, TranslucentLineFallsOnEachPixelOnce) {
    auto bitmap = *Bitmap::Create({.width = 10, .height = 10, .format = PixelFormat::Rgb24});
    Canvas canvas{*bitmap};
    Trace(canvas, {{{0.5, 0.5}, {9.5, 0.5}}, {{9.5, 0.5}, {0.5, 0.5}}}, MakeColor(255, 255, 255, 128));
    for (std::size_t x = 0; x < 10; ++x) {
        EXPECT_EQ(RedOf(ColorsOf(*bitmap)[x]), 128);
    }
}

} // namespace
