// The smallest unit of work: one source file made into one target file.
#pragma once

#include "batch/order.h"
#include "toolkit/messages.h"

namespace lumbrix {

// Reads the order and carries it out; whether it worked is seen by looking for the target.
//
// With "smaller" checked and a height above 0, an existing target is deleted first, even where it is the source, and a
// copy of that height is made. Otherwise the target's extension names the conversion; one that is not bmp, tiff, gif,
// jpg or png is answered with a message. Paths are cut to 259 characters.
void RunConversionJob(const Order& order, Messages& messages);

} // namespace lumbrix
