// Which pixels of a surface a rectangle behind an affine map covers, row by row.
#pragma once

#include "imaginglibrary/core/geometry.h"

namespace imaginglibrary {

// Pixels of a row from `first` up to, not including, `end`.
struct PixelRun {
    std::int64_t first = 0;
    std::int64_t end = 0;

    bool IsEmpty() const { return end <= first; }
};

// A rectangle from (0, 0) to (width, height), seen from a surface whose pixels `fromSurface` maps to it.
class MappedRectangle {
  public:
    MappedRectangle(const Affine& fromSurface, double width, double height)
        : map_(fromSurface), width_(width), height_(height),
          halfX_((std::abs(fromSurface.xx) + std::abs(fromSurface.xy)) / 2),
          halfY_((std::abs(fromSurface.yx) + std::abs(fromSurface.yy)) / 2) {}

    // The pixels of row `y` within `row` that may have a part in the rectangle; those that lie wholly within it, which
    // are some of them or none; and those whose middles lie within it.
    PixelRun Touched(std::int64_t y, const PixelRun& row) const;
    PixelRun Covered(std::int64_t y, const PixelRun& row) const;
    PixelRun Centred(std::int64_t y, const PixelRun& row) const;

    // How much of a pixel lies within the rectangle, 0 to 1: the exact area.
    double CoverageOf(std::int64_t x, std::int64_t y) const;

  private:
    PixelRun Within(double margin, std::int64_t y, const PixelRun& row) const;

    Affine map_;
    double width_;
    double height_;
    double halfX_; // how far a pixel reaches from its middle, in the rectangle's units
    double halfY_;
};

} // namespace imaginglibrary
