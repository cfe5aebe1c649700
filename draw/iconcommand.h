// Makes an icon where there is no window, and nobody who reads a message.
#pragma once

#include <optional>
#include <string>

namespace lumbrix {

// Makes the icon of a bitmap file, at its IconPath. One sentence that names the file and the cause where it was not
// made, and nothing where it was.
std::optional<std::string> WhyNoIcon(const std::string& bitmapPath);

} // namespace lumbrix
