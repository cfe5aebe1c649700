// Reads the size of an image file.
#pragma once

#include "imaging/outcome.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The size is the outcome's `source`; nothing is decoded.
Outcome ReadSize(const std::string& name, const Wishes& wishes);

// As established, in pixels: a blank name gives 0 with both out-arguments untouched, and a failure leaves them so too;
// preset them to tell. NoSession or the imaging library's status on failure; where the load fails the session stays
// open on purpose.
StatusValue GetImageFileDimensions(const std::string& name, std::int32_t* width, std::int32_t* height);

} // namespace lumbrix
