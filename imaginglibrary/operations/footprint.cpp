// How much of a picture a pixel of a surface covers behind an affine map.
#include "imaginglibrary/operations/footprint.h"

namespace imaginglibrary {

namespace {

// How often the one direction may go into the other before a second sample and two more are taken.
constexpr double NeedsTwo = 1.3;
constexpr double NeedsFour = 2.5;

} // namespace

// The map makes an ellipse of a circle. Its long and short half axes are the scales of the two directions that shrink
// least and most (the singular values), and its short axis is the strip's direction.
Footprint::Footprint(const Affine& toSurface) {
    const double a = toSurface.xx * toSurface.xx + toSurface.xy * toSurface.xy;
    const double b = toSurface.xx * toSurface.yx + toSurface.xy * toSurface.yy;
    const double c = toSurface.yx * toSurface.yx + toSurface.yy * toSurface.yy;
    const double most = std::sqrt((a + c + std::hypot(a - c, 2 * b)) / 2);
    const double determinant = std::abs(toSurface.xx * toSurface.yy - toSurface.xy * toSurface.yx);
    const double least = most > 0 ? determinant / most : 0;
    const double wanted = std::min(most, 1.0); // nothing is gained by more than the full size
    samples = wanted > least * NeedsFour ? 4 : wanted > least * NeedsTwo ? 2 : 1;
    scale = samples == 1 ? least : std::min(wanted, least * static_cast<double>(samples));
    const double longAxis = std::atan2(2 * b, a - c) / 2;
    along = {-std::sin(longAxis), std::cos(longAxis)};
}

} // namespace imaginglibrary
