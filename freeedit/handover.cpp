// Handing the picture on the canvas over to the paint window, and taking back what was drawn.
#include "freeedit/handover.h"

#include "draw/drawfile.h"
#include "imaging/exports/lumbrix.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

// Where there is nothing to copy nothing happens.
void CopyIfThere(const std::string& source, const std::string& target) {
    trap([&] { DuplicateFile(source, target); });
}

// A new image at the old settings is drawn only where one of these changes.
void ForceRepaint(HandOverView& view, CanvasTransform& transform) {
    --transform.settings.panX;
    view.ApplyTransform();
    ++transform.settings.panX;
    view.ApplyTransform();
}

} // namespace

void HandOverToDraw(HandOverView& view, CanvasTransform& transform, const std::string& output, StepFiles& steps) {
    view.HideWindow();
    view.ApplyTransform();
    const CanvasArea box = BoundingBox(view.Points());
    const std::int32_t step = ++steps.counter;
    const std::string shown = StepFile(output, step);
    const std::string drawFile = DrawFile(output, step);
    const std::string drawn = StepFile(output, step + 2);

    view.Capture(shown, box);
    ConvertImageToBmp(shown.c_str(), drawFile.c_str());
    TryToRemoveFile(shown);
    CopyIfThere(drawFile, shown);

    if (view.Draw(drawFile)) {
        CopyIfThere(drawn, shown);
    }
    view.LoadCanvasImage(shown);
    view.ShowWindow();
    TryToRemoveFile(drawFile);
    TryToRemoveFile(drawn);
    steps.counter += 2;
    ForceRepaint(view, transform);
}

} // namespace lumbrix
