// Which part of the canvas is captured.
#pragma once

#include "base/geometry.h"
#include "freeedit/transform.h"

namespace lumbrix {

// The area, or the whole canvas where its height is not above 0. It may reach beyond the canvas, and may have no width.
constexpr CanvasArea CapturedArea(PixelSize canvas, const CanvasArea& area) {
    return area.height > 0 ? area : CanvasArea{0, 0, canvas.width, canvas.height};
}

} // namespace lumbrix
