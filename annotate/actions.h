// The two actions of the main window that open the annotate and crop window, again and again if need be.
#pragma once

#include "annotate/state.h"
#include "batch/order.h"
#include "toolkit/messages.h"

#include <cstddef>
#include <string>

namespace lumbrix {

// The windows that take part in the actions.
class ActionWindows {
  public:
    virtual ~ActionWindows() = default;

    // The size of the source in pixels, which the main window's label shows from now on; zeros for a picture that
    // cannot be read.
    virtual PixelSize RefreshSizeLabel() = 0;

    // Each opens a window and comes back when it has ended. The size is that of the stage's source; the title names the
    // job.
    virtual void ShowAnnotateWindow(std::size_t stage, PixelSize size, const std::string& title) = 0;
    virtual void ShowCropDimensions() = 0;
};

// Annotates the source file, stage by stage for as long as Keep is asked for, and copies what the last stage has made
// over the target: nothing, where nothing was placed in it, which leaves an empty file. The content is a JPEG whatever
// the target's extension. No question is asked, and failures pass in silence. All temporary files are deleted.
void RunAnnotateAction(const Order& order, ActionWindows& windows, AnnotateState& state);

// Lets the user mark a rectangle, writes that part of the source as the target and shows it. No question is asked, and
// failures pass in silence. Without a source file the rectangle for batches is asked for instead. The temporary files
// stay in the temporary folder.
void RunCropAction(const Order& order, ActionWindows& windows, Messages& messages, AnnotateState& state);

} // namespace lumbrix
