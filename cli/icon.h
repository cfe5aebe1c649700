// The command that makes an icon of a picture.
#pragma once

#include "cli/job.h"
#include "cli/options.h"

namespace lumbrix::cli {

inline constexpr Option IconOptions[] = {
    {"--sizes", "LIST", "sides of its squares in pixels, 1 to 256 (16,24,32,48,64,128,256)"},
    StrictOption,
    {"--classic", nullptr, "on Windows only: FILE.ico beside the square bitmap FILE, 32 pixels wide and high"},
};

// As it was asked for: an icon of several sizes, or the classic one.
int RunIcon(const Arguments& arguments);

// Makes the classic icon of a bitmap and prints its name. Wrong usage where the system has no such icons.
int RunClassicIcon(const std::string& bitmap);

} // namespace lumbrix::cli
