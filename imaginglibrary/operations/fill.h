// Fills outlines with one colour.
#pragma once

#include "imaginglibrary/operations/blend.h"
#include "imaginglibrary/operations/path.h"

#include <vector>

namespace imaginglibrary {

enum class Edges {
    Smooth, // pixels that are covered in part are coloured in part
    Hard,   // pixels that are covered by half are coloured, the others are not
};

// Lays `color` over all that lies inside the outline.
void Fill(Canvas& canvas, const std::vector<Edge>& outline, Color color, Edges edges);

// Colours every pixel that the edges pass through, so that a line of one pixel has no gaps.
void Trace(Canvas& canvas, const std::vector<Edge>& line, Color color);

} // namespace imaginglibrary
