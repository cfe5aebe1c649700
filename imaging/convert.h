// Turns one image file into another of a named format, at the same size.
#pragma once

#include "imaging/source.h"

#include <string>

namespace lumbrix {

// One decode and one encode.
Outcome Convert(const ConvertOrder& order, const Wishes& wishes);

// As established: a blank name gives 0 and nothing is done; NoSession, NoEncoder, or the imaging library's status on
// failure. Where the encoder is missing, or load or save fails, the session stays open on purpose.
StatusValue ConvertImageFile(const std::string& source, const std::string& destination, const std::string& mimeWord);

} // namespace lumbrix
