// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#pragma once

#include "cli/options.h"

#include <cstdint>
#include <string>

namespace lumbrix::cli {

// Writes a copy of a picture at another height; throws Failure where that cannot be.
void WriteResized(const std::string& source, const std::string& target, std::int32_t height);

// These two convert as the engine does, in one step.
int RunConvert(const Arguments& arguments);
int RunThumb(const Arguments& arguments);

int RunResize(const Arguments& arguments);
int RunCrop(const Arguments& arguments);
int RunRotate(const Arguments& arguments);

} // namespace lumbrix::cli
