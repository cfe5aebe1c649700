// Icons are made by the drawing of Windows alone.
#include "cli/icon.h"

namespace lumbrix::cli {

int RunIcon(const Arguments& /*arguments*/) { throw WrongUsage{"the command icon is there on Windows only"}; }

} // namespace lumbrix::cli
