// What the Save label of the Free Edit window does to files.
#pragma once

#include "freeedit/transform.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The canvas as it is saved, so that tests put another in its place.
class CanvasView {
  public:
    virtual ~CanvasView() = default;

    // Shows the picture as the settings have it now.
    virtual void ApplyTransform() = 0;

    virtual const CornerPoints& Points() const = 0;

    // Writes what a part of the canvas shows, or all of it for a height of 0 or less, as a BMP file of 24 bits. Whether
    // that was possible.
    virtual bool Capture(const std::string& path, const CanvasArea& area) = 0;
};

// Captures the part that the picture takes into a step file beside the output, turns that into the output, whose
// extension names the format, and deletes it. Does nothing without an output; what fails is not told.
void SavePicture(CanvasView& canvas, const std::string& output, std::int32_t stepCounter);

} // namespace lumbrix
