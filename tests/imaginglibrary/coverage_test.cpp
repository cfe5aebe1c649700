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

TEST(Coverage, QuadraticCurvesAreParabolas) {
    Path parabola;
    parabola.MoveTo({0, 30});
    parabola.QuadraticTo({20, -10}, {40, 30});
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(parabola))), 2.0 / 3 * 40 * 20, 0.3);
}

TEST(Coverage, EveryContourIsClosed) {
    Path two = Rectangle(1, 1, 3, 3);
    two.AddRectangle({10, 1}, {12, 4});
    two.MoveTo({20, 20});
    two.LineTo({30, 20});
    two.LineTo({30, 30});
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(two))), 4 + 6 + 50, 0.05);
}

TEST(Coverage, BordersThatCrossTheLeftSideBetweenRowsKeepTheirArea) {
    Path slanted;
    slanted.MoveTo({-20, 0});
    slanted.LineTo({20, 0});
    slanted.LineTo({20, 20.5});
    slanted.LineTo({-20, 10.5});
    // The lower border lies at 15.5 on the left side of the square.
    EXPECT_NEAR(AreaOf(CoverageOf(EdgesOf(slanted))), (15.5 + 20.5) / 2 * 20, 0.1);
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

TEST(Fill, HardEdgesTakePixelsThatAreCoveredByHalf) {
    const auto isColored = [](double left, std::size_t x) {
        auto bitmap = *Bitmap::Create({.width = 10, .height = 1, .format = PixelFormat::Rgb24});
        Canvas canvas{*bitmap};
        Fill(canvas, EdgesOf(Rectangle(left, 0, left + 4, 1)), MakeColor(255, 255, 255), Edges::Hard);
        return ColorsOf(*bitmap)[x] == White;
    };
    EXPECT_TRUE(isColored(2.5, 2));
    EXPECT_FALSE(isColored(2.502, 2));
    EXPECT_TRUE(isColored(2.502, 6));
    EXPECT_FALSE(isColored(2.498, 6));
}

TEST(Fill, SmoothEdgesShareOutTheAlphaOfTheColor) {
    auto bitmap = *Bitmap::Create({.width = 4, .height = 2, .format = PixelFormat::Argb32});
    Canvas canvas{*bitmap};
    Fill(canvas, EdgesOf(Rectangle(0.5, 0, 1.25, 1)), MakeColor(10, 20, 30, 3), Edges::Smooth);
    Fill(canvas, EdgesOf(Rectangle(2, 0.5, 3, 2)), MakeColor(40, 50, 60, 201), Edges::Smooth);
    // 128 of 255 times 3 is just above one and a half, 64 of 255 times 3 three quarters.
    EXPECT_EQ(ColorsOf(*bitmap),
              (std::vector<Color>{MakeColor(10, 20, 30, 2), MakeColor(10, 20, 30, 1), MakeColor(40, 50, 60, 101), 0, //
                                  0, 0, MakeColor(40, 50, 60, 201), 0}));
}

TEST(Fill, LinesHaveNoGapsAndEndAtTheBorders) {
    auto bitmap = *Bitmap::Create({.width = 5, .height = 4, .format = PixelFormat::Rgb24});
    Canvas canvas{*bitmap, 10, 20};
    Trace(canvas, {{{8.5, 18.5}, {16.5, 26.5}}, {{11.5, 20.5}, {11.5, 20.5}}}, MakeColor(255, 255, 255));
    std::vector<Color> expected(20, Black);
    for (const std::size_t at : {0u, 6u, 12u, 18u, 1u}) {
        expected[at] = White;
    }
    EXPECT_EQ(ColorsOf(*bitmap), expected);
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
