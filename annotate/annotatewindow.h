// The window in which pictures are annotated and cropped.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace lumbrix {

// Opens the window on a stage of ImageStages and stays until it has ended; always 0. `width` and `height` are those of
// the stage's source in pixels. The title names the job; an empty one is "Annotate image".
INT_PTR ShowAnnotateWindow(HWND parent, std::size_t stage, std::int32_t width, std::int32_t height, std::string title);

} // namespace lumbrix
