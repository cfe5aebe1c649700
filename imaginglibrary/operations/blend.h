// Lays pixels over a bitmap by their alpha.
#pragma once

#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/geometry.h"

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// Pixels to draw on, and where they lie on the surface that they are a part or the whole of. Does not own them.
class Canvas {
  public:
    // The whole of a bitmap, its first pixel at (left, top) of the surface.
    explicit Canvas(Bitmap& bitmap, std::int64_t left = 0, std::int64_t top = 0);

    // Pixels somewhere in memory: `first` is the first one of the top row of `area`, and every row begins `rowStep`
    // bytes behind the one above it, before it where that is negative.
    Canvas(PixelFormat format, std::uint8_t* first, std::ptrdiff_t rowStep, const PixelRect& area)
        : format_(format), first_(first), rowStep_(rowStep), area_(area) {}

    const PixelRect& Area() const { return area_; }
    PixelFormat Format() const { return format_; }

    // The pixel at (x, y) of the surface, within the area; those to its right follow.
    std::uint8_t* PixelAt(std::int64_t x, std::int64_t y) const {
        return first_ + static_cast<std::ptrdiff_t>(y - area_.top) * rowStep_ +
               static_cast<std::ptrdiff_t>(x - area_.left) * static_cast<std::ptrdiff_t>(BitsPerPixel(format_) / 8);
    }

  private:
    PixelFormat format_;
    std::uint8_t* first_;
    std::ptrdiff_t rowStep_;
    PixelRect area_;
};

// Whether pictures of this format can be drawn on: no indexed format, and not Argb1555.
bool IsDrawable(PixelFormat format);

// Lays `count` pixels, four bytes each of blue, green, red and alpha, not premultiplied, over row `y` from `x` on, both
// in the surface's coordinates and within the canvas. Every channel becomes source * alpha + target * (1 - alpha),
// rounded once; a target with alpha of its own gets the union of both (Porter and Duff, "Compositing Digital Images",
// 1984: over).
void BlendRow(const Canvas& canvas, std::int64_t x, std::int64_t y, const std::uint8_t* pixels, std::size_t count);

// Whether opaque pixels of four bytes can be stored in the format as they are.
constexpr bool TakesPremultiplied(PixelFormat format) {
    return format == PixelFormat::Rgb32 || format == PixelFormat::Pargb32;
}

// The same for premultiplied pixels. A colour above its alpha counts as much as its alpha.
void BlendPremultipliedRow(const Canvas& canvas, std::int64_t x, std::int64_t y, const std::uint8_t* pixels,
                           std::size_t count);

} // namespace imaginglibrary
