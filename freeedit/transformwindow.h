// The Free Edit window, in which a picture is turned, stretched, skewed and panned.
#pragma once

#include "batch/order.h"
#include "freeedit/stepfiles.h"
#include "toolkit/messages.h"

#include <windows.h>

namespace lumbrix {

// Opens the window on the order's source file, and stays until it has ended; nothing without one. Save writes the
// order's target. At its end it forgets the step files, and then has what is left of them removed.
void ShowTransformWindow(HWND parent, const Order& order, StepFiles& steps, Messages& messages);

} // namespace lumbrix
