// Handing the picture on the canvas over to the paint window, and taking back what was drawn.
#pragma once

#include "freeedit/saving.h"
#include "freeedit/stepfiles.h"
#include "freeedit/transform.h"

#include <string>

namespace lumbrix {

// What the window does in between, so that tests put another in its place.
class HandOverView : public CanvasView {
  public:
    // Hiding lets the messages that wait be worked off once.
    virtual void HideWindow() = 0;
    virtual void ShowWindow() = 0;

    // Runs the paint window on a file; whether the drawing was to be saved.
    virtual bool Draw(const std::string& drawFile) = 0;

    virtual void LoadCanvasImage(const std::string& path) = 0;
};

// Captures the picture's box into step files beside the output, has one drawn on, and shows it, drawn on or not, where
// the corners of before are. Only the first hand-over of an opening brings the drawing back: later ones look for it
// under a name that nobody writes. The counter goes up by 3. The file that is shown stays behind.
void HandOverToDraw(HandOverView& view, CanvasTransform& transform, const std::string& output, StepFiles& steps);

} // namespace lumbrix
