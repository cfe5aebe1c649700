// Fills outlines with one colour.
#include "imaginglibrary/operations/fill.h"

#include "imaginglibrary/operations/coverage.h"

#include <cmath>
#include <set>
#include <utility>

namespace imaginglibrary {

namespace {

void PutColor(std::uint8_t* pixel, Color color, unsigned alpha) {
    pixel[0] = BlueOf(color);
    pixel[1] = GreenOf(color);
    pixel[2] = RedOf(color);
    pixel[3] = static_cast<std::uint8_t>(alpha);
}

} // namespace

void Fill(Canvas& canvas, const std::vector<Edge>& outline, Color color, Edges edges) {
    std::vector<std::uint8_t> pixels;
    ForEachCoveredRow(
        outline, canvas.Area(), [&](std::int64_t x, std::int64_t y, const std::uint8_t* coverage, std::size_t count) {
            pixels.resize(count * 4);
            for (std::size_t i = 0; i < count; ++i) {
                const unsigned covered = edges == Edges::Smooth ? coverage[i] : coverage[i] >= 128 ? 255u : 0u;
                PutColor(&pixels[i * 4], color, (covered * AlphaOf(color) + 127) / 255);
            }
            BlendRow(canvas, x, y, pixels.data(), count);
        });
}

void Trace(Canvas& canvas, const std::vector<Edge>& line, Color color) {
    const PixelRect area = canvas.Area();
    std::set<std::pair<std::int64_t, std::int64_t>> seen; // a translucent colour must fall on a pixel once
    std::uint8_t pixel[4];
    PutColor(pixel, color, AlphaOf(color));
    for (const Edge& edge : line) {
        const double length = std::max(std::abs(edge.to.x - edge.from.x), std::abs(edge.to.y - edge.from.y));
        if (!(length < 1e6)) {
            continue;
        }
        const int steps = static_cast<int>(std::ceil(length)) + 1;
        for (int i = 0; i <= steps; ++i) {
            const double part = static_cast<double>(i) / steps;
            const auto x = static_cast<std::int64_t>(std::floor(edge.from.x + (edge.to.x - edge.from.x) * part));
            const auto y = static_cast<std::int64_t>(std::floor(edge.from.y + (edge.to.y - edge.from.y) * part));
            const bool isInside = x >= area.left && x < area.right && y >= area.top && y < area.bottom;
            if (isInside && seen.emplace(x, y).second) {
                BlendRow(canvas, x, y, pixel, 1);
            }
        }
    }
}

} // namespace imaginglibrary
