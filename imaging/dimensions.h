// Reads the size of an image file.
#pragma once

#include "imaging/status.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// In pixels. A blank name gives 0 with both out-arguments untouched, and a failure leaves them so too; preset them to
// tell. NoSession or the imaging library's status on failure; where the load fails the session stays open on purpose.
StatusValue GetImageFileDimensions(const std::string& name, std::int32_t* width, std::int32_t* height);

} // namespace lumbrix
