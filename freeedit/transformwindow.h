// The Free Edit window, in which a picture is turned, stretched, skewed and panned.
#pragma once

#include "batch/order.h"
#include "draw/textfont.h"
#include "freeedit/stepfiles.h"
#include "toolkit/messages.h"

#include <windows.h>

namespace lumbrix {

// What outlives an opening of the window, one instance for the program.
struct FreeEditState {
    StepFiles steps;
    TextFont textFont; // of the paint window
};

// Opens the window on the order's source file, and stays until it has ended; nothing without one. Save writes the
// order's target. At its end it forgets the step files, and then has what is left of them removed.
void ShowTransformWindow(HWND parent, const Order& order, FreeEditState& state, Messages& messages);

} // namespace lumbrix
