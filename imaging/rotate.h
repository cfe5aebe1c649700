// Turns an image file by right angles and flips it.
#pragma once

#include "imaging/outcome.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// What the imaging library calls a turn by `angle` degrees clockwise and then a flip: 0 to 7. The flip word is "H",
// "V", "HV", "VH" in any letter case, or empty; with any other word the code is 0. -1 for an angle that is not 0, 90,
// 180 or 270.
std::int32_t RotateFlipCode(std::int32_t angle, const std::string& flip);

struct RotateOrder {
    std::string source;
    std::string destination;
    std::string mimeWord;
    std::int32_t angle; // degrees clockwise
    std::string flip;
};

// The source's properties go along, a stored orientation unchanged. Truthful, an angle that is no right one and an
// unknown flip word are refused.
Outcome Rotate(const RotateOrder& order, const Wishes& wishes);

// As established: the destination's extension names the format. Refused for a blank name or an unknown extension, else
// Done, whether a file was written or not. An angle that is no right one leaves the picture as it is.
StatusValue RotateImage(const std::string& source, const std::string& destination, std::int32_t angle,
                        const std::string& flip);

} // namespace lumbrix
