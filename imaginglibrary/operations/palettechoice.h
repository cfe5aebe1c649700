// Chooses the colours of a palette for a picture whose colours were counted.
#pragma once

#include "imaginglibrary/operations/colorhistogram.h"

#include <vector>

namespace imaginglibrary {

// At most `maximum` (1 to 256) opaque colours for cells of one picture. Cells that are no more than that are all kept,
// each with its mean, so a histogram that is exact gives an exact palette.
//
// Otherwise the colour cube is cut in two again and again, always where a cut along one axis takes away most of the
// summed squared error (X. Wu, "Efficient Statistical Computations for Optimal Color Quantization", Graphics Gems II,
// 1991, but over the list of cells instead of a table of moments), and the means of the boxes are then moved by a few
// rounds of k-means (S. Lloyd, 1982). Channels weigh alike.
Palette ChoosePalette(std::vector<ColorCell> cells, unsigned maximum);

} // namespace imaginglibrary
