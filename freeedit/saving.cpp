// What the Save label of the Free Edit window does to files.
#include "freeedit/saving.h"

#include "freeedit/stepfiles.h"
#include "imaging/exports/internal.h"
#include "platform/files.h"

namespace lumbrix {

void SavePicture(CanvasView& canvas, const std::string& output, std::int32_t stepCounter) {
    if (output.empty()) {
        return;
    }
    canvas.ApplyTransform();
    const std::string step = StepFile(output, stepCounter + 1);
    canvas.Capture(step, BoundingBox(canvas.Points()));
    ConvertImageFile(step.c_str(), output.c_str());
    TryToRemoveFile(step);
}

} // namespace lumbrix
