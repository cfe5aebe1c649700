// What the button "Convert" runs: one file, or all files of a folder.
#pragma once

#include "base/geometry.h"
#include "batch/order.h"
#include "toolkit/messages.h"

namespace lumbrix {

// With a source file and a target, the single file, after a question where the target exists; else, with a source
// folder and a target folder that both exist, every file of the folder; else nothing. Shows what came of it. An error
// of file operations of its own ends the run with a message.
//
// In a folder, files with a convertible extension are made smaller to the ordered height, whether "smaller" is
// checked or not; all others are cropped to the rectangle, which is in pixels. Both texts are put before the names as
// they stand, so folders are expected to end in a backslash. Targets are replaced without a question, a failure stops
// nothing, and what the engine reports as done counts as processed.
void RunBatch(const Order& order, Messages& messages, const PixelRectangle& cropRectangle);

} // namespace lumbrix
