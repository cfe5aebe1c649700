// The window in which pictures are annotated and cropped.
#pragma once

#include "annotate/state.h"
#include "toolkit/messages.h"

#include <windows.h>

#include <cstddef>
#include <string>

namespace lumbrix {

// Opens the window on a stage and stays until it has ended; always 0. `size` is that of the stage's source. The title
// names the job; an empty one is "Annotate image".
INT_PTR ShowAnnotateWindow(HWND parent, AnnotateState& state, Messages& messages, std::size_t stage, PixelSize size,
                           const std::string& title);

} // namespace lumbrix
