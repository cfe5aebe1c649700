// Files dropped on a window.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace lumbrix {

// The paths in their order, 254 characters at most each, without plain folders. Ends the drop.
std::vector<std::string> TakeDroppedFiles(HDROP dropped);

} // namespace lumbrix
