// How the picture lies on the canvas: what the user has set, and the three points that follow from it.
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstdint>
#include <string>

namespace lumbrix {

// The corners of the picture before it is turned, as texts, for the user edits them in boxes: the horizontal and the
// vertical place of the upper left, the upper right and the lower left one.
using CornerTexts = std::array<std::string, 6>;

struct CanvasSettings {
    CornerTexts cornerTexts;
    float rotationAngle = 0; // degrees, -180 to 180
    float stretchFactor = 0; // 0 to 5; 1 is as large as the corners say
    std::int32_t panX = 0;   // pixels, added to every point
    std::int32_t panY = 0;

    bool operator==(const CanvasSettings&) const = default;
};

// First stretched, then turned around the place 0, 0, then panned; after each step the places are whole pixels, ties to
// even. As y grows downwards, a positive angle turns counterclockwise.
CornerPoints TransformedCorners(const CanvasSettings& settings);

// The settings, and the points as they were worked out last.
class CanvasTransform {
  public:
    CanvasSettings settings;

    // Works out the points anew; false, and nothing is done, where all settings are as they were the last time.
    bool Apply();

    // For a picture that has just been loaded: its own corners, but for the height of the upper right one.
    void PlaceNaturally(PixelSize picture);

    const CornerPoints& Points() const { return points_; }

  private:
    CanvasSettings applied_;
    CornerPoints points_{};
};

// A part of the canvas, in its pixels. Nothing says that it has any size, or lies within.
struct CanvasArea {
    std::int32_t left;
    std::int32_t top;
    std::int32_t width;
    std::int32_t height;

    bool operator==(const CanvasArea&) const = default;
};

// What of the canvas the picture takes. Right for turns of up to a quarter; the same formulas are used beyond.
CanvasArea BoundingBox(const CornerPoints& points);

} // namespace lumbrix
