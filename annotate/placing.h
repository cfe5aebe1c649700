// What happens on the pictures when the user clicks in the annotate and crop window.
#pragma once

#include "annotate/state.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The window, as far as its pictures need it.
class PictureView {
  public:
    virtual ~PictureView() = default;

    // In pixels of the picture control, at the moment of asking.
    virtual PixelPoint CursorPoint() const = 0;

    // Shows a picture file in the control, drawn before it comes back.
    virtual void SetPreviewImage(const std::string& path) = 0;

    // A message with one button, OK.
    virtual void Show(const std::string& text, const std::string& title) = 0;
};

// At the opening: settles the scale for a picture of this size in a control of that size, in pixels, and makes the
// stage's preview copy. That the copy cannot be made passes in silence; nothing is shown then.
void PreparePreview(std::size_t stage, std::int32_t width, std::int32_t height, std::int32_t controlWidth,
                    std::int32_t controlHeight);

// Writes or stamps `text` at the cursor, first on the preview, which is shown at once, then at full size. Both start
// from the unchanged inputs of the current stage, so a second click takes the place of the first. The preview's result
// is verified; that of the full size is not.
void PlaceAnnotation(PictureView& view, const std::string& text);

// The press of the button marks the first corner of a crop.
void MarkFirstCorner(const PictureView& view);

// The release marks the second corner, which settles CropRect, or the first where no press was reported. Whether the
// rectangle is complete.
bool MarkCorner(const PictureView& view);

} // namespace lumbrix
