// What happens on the pictures when the user clicks in the annotate and crop window.
#pragma once

#include "annotate/state.h"
#include "toolkit/messages.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The window, as far as its pictures need it.
class PictureView {
  public:
    virtual ~PictureView() = default;

    // Shows a picture file in the control, drawn before it comes back.
    virtual void SetPreviewImage(const std::string& path) = 0;
};

// Settles the scale for a picture of this size in a control of that size, and makes the stage's preview copy. That the
// copy cannot be made passes in silence; nothing is shown then.
void PreparePreview(AnnotateState& state, std::size_t stage, PixelSize picture, PixelSize control);

// At the opening: prepares the preview and shows it.
void OpenPicture(AnnotateState& state, PictureView& view, Messages& messages, std::size_t stage, PixelSize picture,
                 PixelSize control);

// Writes or stamps `text` where the click was, in pixels of the control, first on the preview, which is shown at once,
// then at full size. Both start from the unchanged inputs of the current stage, so a second click takes the place of
// the first. The preview's result is verified; that of the full size is not.
void PlaceAnnotation(AnnotateState& state, PictureView& view, Messages& messages, const std::string& text,
                     PixelPoint click);

// The press of the button marks the first corner of a crop.
void MarkFirstCorner(AnnotateState& state, PixelPoint press);

// The release marks the second corner, which settles the crop rectangle, or the first where no press was reported.
// Whether the rectangle is complete.
bool MarkCorner(AnnotateState& state, PixelPoint release);

} // namespace lumbrix
