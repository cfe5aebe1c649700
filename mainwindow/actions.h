// The action of the main window that turns pictures.
#pragma once

#include "batch/order.h"
#include "toolkit/messages.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// Writes the source as the target, turned by an angle in degrees and flipped, and says whether there is a file by that
// name then. Without a source or a target nothing happens.
void RunRotateAction(const Order& order, std::int32_t angle, const std::string& flip, Messages& messages);

} // namespace lumbrix
