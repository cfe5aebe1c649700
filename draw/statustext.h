// What the status label of the paint window says about the mouse.
#pragma once

#include "base/geometry.h"
#include "base/numbers.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace lumbrix {

// Numbers have a blank before them where they have no sign: "Pos: 12, 34".
inline std::string PlaceStatus(PixelPoint place) {
    return "Pos:" + NumberWithLeadingBlank(place.x) + "," + NumberWithLeadingBlank(place.y);
}

inline std::string EndsStatus(PixelPoint from, PixelPoint to) {
    return PlaceStatus(from) + "  - " + NumberWithLeadingBlank(to.x) + "," + NumberWithLeadingBlank(to.y);
}

// The size is the distance between the places, in two lines: a box of one pixel has the size 0.
inline std::string SizeStatus(PixelPoint from, PixelPoint to) {
    return EndsStatus(from, to) + "\r\nSize:" + NumberWithLeadingBlank(std::abs(to.x - from.x)) + " x" +
           NumberWithLeadingBlank(std::abs(to.y - from.y));
}

} // namespace lumbrix
