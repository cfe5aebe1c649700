// Turns by right angles, and mirrors.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <memory>

namespace imaginglibrary {

// The platform's codes: the lower two bits count quarter turns clockwise, and the third says whether the turned picture
// is then mirrored left to right.
inline constexpr unsigned QuarterTurns = 3;
inline constexpr unsigned Mirror = 4;
inline constexpr unsigned TurnCodes = 8;

// Every pixel keeps its value, in every format. Odd quarter turns swap width and height, and the two resolutions.
//
// Nothing is read before rows are asked for. A mirror left to right, and what else the order of the picture's rows
// allows, takes them as they come; for the others the turned picture is made in memory at the first reading and kept.
// OutOfMemory where that would exceed MaximumPictureBytes. What was turned before is turned anew from its own source.
Result<std::shared_ptr<const PixelSource>> Turned(std::shared_ptr<const PixelSource> picture, unsigned code);

} // namespace imaginglibrary
