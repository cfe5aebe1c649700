// The beginning that conversions have in common.
#pragma once

#include "imaging/course.h"

#include <string>

namespace lumbrix {

// Between which files, and in which format.
struct ConvertOrder {
    std::string source;
    std::string destination;
    std::string mimeWord; // names the format, whatever the destination's extension says
};

// Whether the order names files, and a format: as established an empty word is one too, that of the first encoder.
bool IsComplete(const ConvertOrder& order, Conduct conduct);

// Starts a session, finds the encoder and loads the source, in this order, and looks at each answer. False where one of
// them fails; as established, the session then stays open, but for a source that gave no image and no failure.
bool OpenSource(Course& course, const ConvertOrder& order, Clsid& encoder, OwnedImage& image);

} // namespace lumbrix
