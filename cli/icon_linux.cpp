// Classic icons are made by the drawing of Windows alone.
#include "cli/icon.h"

namespace lumbrix::cli {

int RunClassicIcon(const std::string& /*bitmap*/) { throw WrongUsage{"--classic is there on Windows only"}; }

} // namespace lumbrix::cli
