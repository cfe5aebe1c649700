// Draws an image file on a device context.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/status.h"

#include <string>

namespace lumbrix {

// Always Done. No session is started, so the caller must hold one; and the name is handed on as it stands, without
// becoming wide text, so no real file is ever found under it.
StatusValue DisplayImage(const std::string& name, DeviceContextHandle context, float x, float y);

// Draws an image file at the top left of a device context, pixel for pixel. NoSession, or the imaging library's status.
StatusValue DrawImageFile(const std::string& name, DeviceContextHandle context);

} // namespace lumbrix
