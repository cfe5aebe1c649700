// How the picture lies on the canvas: what the user has set, and the three points that follow from it.
#include "freeedit/transform.h"

#include "base/numbers.h"

#include <cmath>

namespace lumbrix {

namespace {

constexpr double RadiansPerDegree = 0.0174532925199433;

// Stretched, turned and panned.
class Mapping {
  public:
    explicit Mapping(const CanvasSettings& settings) : settings_(settings) {
        const double angle = RadiansPerDegree * static_cast<double>(settings.rotationAngle);
        sine_ = static_cast<float>(std::sin(angle));
        cosine_ = static_cast<float>(std::cos(angle));
    }

    PixelPoint operator()(PixelPoint corner) const {
        const double x = Stretched(corner.x);
        const double y = Stretched(corner.y);
        return {Panned(cosine_ * x + sine_ * y, settings_.panX), Panned(cosine_ * y - sine_ * x, settings_.panY)};
    }

  private:
    std::int32_t Stretched(std::int32_t place) const {
        return RoundToEven(static_cast<double>(settings_.stretchFactor) * place);
    }

    static std::int32_t Panned(double place, std::int32_t pan) {
        return RoundToEven(static_cast<double>(RoundToEven(place)) + pan);
    }

    const CanvasSettings& settings_;
    double sine_; // of single precision
    double cosine_;
};

} // namespace

CornerPoints TransformedCorners(const CanvasSettings& settings) {
    const Mapping mapping(settings);
    CornerPoints points;
    for (std::size_t corner = 0; corner < points.size(); ++corner) {
        points[corner] = mapping(
            {NumericValue(settings.cornerTexts[2 * corner]), NumericValue(settings.cornerTexts[2 * corner + 1])});
    }
    return points;
}

bool CanvasTransform::Apply() {
    if (settings == applied_) {
        return false;
    }
    applied_ = settings;
    points_ = TransformedCorners(settings);
    return true;
}

void CanvasTransform::PlaceNaturally(PixelSize picture) {
    points_[0] = {0, 0};
    points_[1].x = picture.width;
    points_[2] = {0, picture.height};
}

CanvasArea BoundingBox(const CornerPoints& points) {
    const auto& [topLeft, topRight, bottomLeft] = points;
    // Within 32 bits, so what is too large comes out at the other end.
    const auto sum = [](std::int64_t one, std::int64_t other, std::int64_t twice) {
        return static_cast<std::int32_t>(one + other - 2 * twice);
    };
    const auto difference = [](std::int64_t to, std::int64_t from) { return static_cast<std::int32_t>(to - from); };
    if (topLeft.y > topRight.y) {
        return {topLeft.x, topRight.y, sum(topRight.x, bottomLeft.x, topLeft.x), difference(bottomLeft.y, topRight.y)};
    }
    return {bottomLeft.x, topLeft.y, difference(topRight.x, bottomLeft.x), sum(topRight.y, bottomLeft.y, topLeft.y)};
}

} // namespace lumbrix
