// Which pixels of a surface a rectangle behind an affine map covers, row by row.
#include "imaginglibrary/operations/pixelcoverage.h"

#include <array>
#include <utility>

namespace imaginglibrary {

namespace {

// In pixels of the surface: less is taken for nothing, so that borders on whole pixels are met.
constexpr double Tolerance = 1e-6;

// Narrows a run to the pixels x for which slope * x + offset lies from `least` to `most`.
void Narrow(PixelRun& run, double slope, double offset, double least, double most) {
    if (slope == 0) {
        if (offset < least || offset > most) {
            run.end = run.first;
        }
        return;
    }
    double from = (least - offset) / slope;
    double to = (most - offset) / slope;
    if (from > to) {
        std::swap(from, to);
    }
    const auto bounded = [&](double x) {
        return std::clamp(x, static_cast<double>(run.first), static_cast<double>(run.end));
    };
    const auto first = static_cast<std::int64_t>(bounded(std::ceil(from)));
    const auto end = static_cast<std::int64_t>(bounded(std::floor(to) + 1));
    run = {first, std::max(first, end)};
}

// A convex polygon that is cut off along lines; no more than eight corners come of a square and four cuts.
class CutPolygon {
  public:
    explicit CutPolygon(const std::array<Point, 4>& corners) : count_(4) {
        std::copy(corners.begin(), corners.end(), corners_.begin());
    }

    // Keeps what has `distance` of 0 or more, which is linear in the point.
    template <class Distance> void Keep(Distance distance) {
        std::array<Point, MostCorners> kept;
        std::size_t count = 0;
        for (std::size_t i = 0; i < count_; ++i) {
            const Point& from = corners_[i];
            const Point& to = corners_[(i + 1) % count_];
            const double before = distance(from);
            const double behind = distance(to);
            if (before >= 0 && count < MostCorners) {
                kept[count++] = from;
            }
            if ((before >= 0) != (behind >= 0) && count < MostCorners) {
                const double part = before / (before - behind);
                kept[count++] = {from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
            }
        }
        corners_ = kept;
        count_ = count;
    }

    double Area() const {
        double twice = 0;
        for (std::size_t i = 1; i + 1 < count_; ++i) {
            const Point& a = corners_[0];
            const Point& b = corners_[i];
            const Point& c = corners_[i + 1];
            twice += (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        }
        return std::abs(twice) / 2;
    }

  private:
    static constexpr std::size_t MostCorners = 8;

    std::array<Point, MostCorners> corners_;
    std::size_t count_;
};

} // namespace

PixelRun MappedRectangle::Touched(std::int64_t y, const PixelRun& row) const {
    return Within(2 * Tolerance - 1, y, row);
}

PixelRun MappedRectangle::Covered(std::int64_t y, const PixelRun& row) const {
    return Within(1 - 2 * Tolerance, y, row);
}

PixelRun MappedRectangle::Centred(std::int64_t y, const PixelRun& row) const { return Within(0, y, row); }

// The pixels whose middles lie `margin` half pixels within every border.
PixelRun MappedRectangle::Within(double margin, std::int64_t y, const PixelRun& row) const {
    PixelRun run = row;
    const Point start = map_({0.5, static_cast<double>(y) + 0.5});
    Narrow(run, map_.xx, start.x, margin * halfX_, width_ - margin * halfX_);
    Narrow(run, map_.yx, start.y, margin * halfY_, height_ - margin * halfY_);
    return run;
}

double MappedRectangle::CoverageOf(std::int64_t x, std::int64_t y) const {
    const auto left = static_cast<double>(x);
    const auto top = static_cast<double>(y);
    CutPolygon pixel({map_({left, top}), map_({left + 1, top}), map_({left + 1, top + 1}), map_({left, top + 1})});
    const double area = pixel.Area();
    pixel.Keep([&](const Point& point) { return point.x; });
    pixel.Keep([&](const Point& point) { return width_ - point.x; });
    pixel.Keep([&](const Point& point) { return point.y; });
    pixel.Keep([&](const Point& point) { return height_ - point.y; });
    return area > 0 ? std::min(1.0, pixel.Area() / area) : 0;
}

} // namespace imaginglibrary
