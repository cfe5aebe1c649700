// How much of a picture a pixel of a surface covers behind an affine map, and how to read that much of it.
#pragma once

#include "imaginglibrary/core/geometry.h"

#include <cstddef>

namespace imaginglibrary {

// Where a map shrinks one direction more than the other, a pixel covers a long strip. It is read in a few samples along
// the strip, from a form of the picture as large as the other direction wants it; else in one.
struct Footprint {
    static constexpr std::size_t MostSamples = 4;

    // Of the map from a picture to the surface.
    explicit Footprint(const Affine& toSurface);

    // The scale of the form to read.
    double scale;

    // The samples: 1, 2 or 4.
    std::size_t samples;

    // Where each lies on the surface, seen from the pixel's middle.
    Point Offset(std::size_t sample) const {
        const double part = (static_cast<double>(sample) + 0.5) / static_cast<double>(samples) - 0.5;
        return {along.x * part, along.y * part};
    }

    // The direction of the strip on the surface, a pixel long.
    Point along;
};

} // namespace imaginglibrary
