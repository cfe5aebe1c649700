// Makes a copy of an image file in another size.
#pragma once

#include "imaging/fitting.h"
#include "imaging/outcome.h"

#include <cstdint>
#include <string>

namespace lumbrix {

struct ResizeOrder {
    std::string source;
    std::string destination;
    std::string mimeWord;
    Fitting fitting; // as established, a height alone is looked at, whatever it is
};

// The source's properties go along unchanged. Truthful, the fitting must be meaningful. What is drawn on the new
// picture that is not the whole source is not written. A source with a palette becomes true colour; as established
// nothing is drawn on its copy.
Outcome Resize(const ResizeOrder& order, const Wishes& wishes);

// As established: the destination's extension names the format. Refused for a blank name, an unknown extension, a
// source that does not load, has no size or is damaged; the second and third leave the session open on purpose. Done in
// every other case, whether a file was written or not: none is where the height is not above 0, where the extension has
// no encoder, and where the save fails. A source with an indexed pixel format gives a file with nothing drawn on it.
StatusValue ResizeImage(const std::string& source, const std::string& destination, std::int32_t height);

} // namespace lumbrix
