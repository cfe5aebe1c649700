// Lays pixels over a bitmap by their alpha.
#pragma once

#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/geometry.h"

#include <cstdint>

namespace imaginglibrary {

// A bitmap to draw on, and where it lies on the surface that it is a part or the whole of.
struct Canvas {
    Bitmap& bitmap;
    std::int64_t left = 0;
    std::int64_t top = 0;

    PixelRect Area() const {
        return {left, top, left + std::int64_t{bitmap.Info().width}, top + std::int64_t{bitmap.Info().height}};
    }
};

// Whether pictures of this format can be drawn on: no indexed format, and not Argb1555.
bool IsDrawable(PixelFormat format);

// Lays `count` pixels, four bytes each of blue, green, red and alpha, not premultiplied, over row `y` from `x` on, both
// in the surface's coordinates and within the canvas. Every channel becomes source * alpha + target * (1 - alpha),
// rounded once; a target with alpha of its own gets the union of both (Porter and Duff, "Compositing Digital Images",
// 1984: over).
void BlendRow(Canvas& canvas, std::int64_t x, std::int64_t y, const std::uint8_t* pixels, std::size_t count);

} // namespace imaginglibrary
