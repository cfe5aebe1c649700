// Turns one image file into another of a named format, at the same size.
#pragma once

#include "imaging/status.h"

#include <string>

namespace lumbrix {

// One decode and one encode; the format follows the MIME word alone, whatever the extension says. A blank name gives 0
// and nothing is done. NoSession, NoEncoder, or the imaging library's status on failure; where the encoder is missing,
// or load or save fails, the session stays open on purpose.
StatusValue ConvertImageFile(const std::string& source, const std::string& destination, const std::string& mimeWord);

} // namespace lumbrix
