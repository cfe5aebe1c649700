// Turns by right angles, and mirrors.
#pragma once

#include "imaginglibrary/core/bitmap.h"

#include <memory>

namespace imaginglibrary {

// The platform's codes: the lower two bits count quarter turns clockwise, and the third says whether the turned picture
// is then mirrored left to right.
inline constexpr unsigned QuarterTurns = 3;
inline constexpr unsigned Mirror = 4;
inline constexpr unsigned TurnCodes = 8;

// Every pixel keeps its value, in every format. Odd quarter turns swap width and height, and the two resolutions.
Result<std::shared_ptr<Bitmap>> Turned(const PixelSource& picture, unsigned code);

} // namespace imaginglibrary
