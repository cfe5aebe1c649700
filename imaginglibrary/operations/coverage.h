// How much of every pixel lies inside an outline.
#pragma once

#include "imaginglibrary/operations/path.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace imaginglibrary {

// Calls `paint` with the coverage, 0 to 255, of the pixels of each row of `area` that the outline reaches: `count`
// pixels from `x` on. Exact areas, by summing up what every edge covers of the pixels it crosses and of those to its
// right. Contours
// of the same direction unite, a reversed one within another cuts a hole.
void ForEachCoveredRow(
    const std::vector<Edge>& edges, const PixelRect& area,
    const std::function<void(std::int64_t x, std::int64_t y, const std::uint8_t* coverage, std::size_t count)>& paint);

// The smallest rectangle of whole pixels around all edges; empty for none, and kept within some billions.
PixelRect BoundsOf(const std::vector<Edge>& edges);

} // namespace imaginglibrary
