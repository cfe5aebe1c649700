// The commands that draw on a picture: annotate and stamp.
#pragma once

#include "cli/job.h"
#include "cli/options.h"

namespace lumbrix::cli {

inline constexpr Option AnnotateOptions[] = {
    {"--font", "NAME", "an installed font family (Arial)"},
    {"--size", "N", "height of the letters in pixels (24)"},
    {"--bold", nullptr, "bold letters"},
    {"--italic", nullptr, "slanted letters"},
    {"--underline", nullptr, "underlined letters"},
    {"--strikeout", nullptr, "letters struck out"},
    {"--color", "RRGGBB", "six hexadecimal digits (000000, black)"},
    {"--alpha", "N", "from 1, faint, to 255, opaque (255)"},
};

int RunAnnotate(const Arguments& arguments);
int RunStamp(const Arguments& arguments);

} // namespace lumbrix::cli
