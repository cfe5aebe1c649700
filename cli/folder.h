// The command that converts every picture of a folder.
#pragma once

#include "cli/job.h"
#include "cli/options.h"
#include "cli/sizing.h"

namespace lumbrix::cli {

inline constexpr Option FolderOptions[] = {
    {"--recursive", nullptr, "search the subfolders too, and keep their layout"},
    {"--skip-existing", nullptr, "leave targets that are there already as they are"},
    {"--jobs", "N", "how many files are worked on at a time (one for each processor)"},
    WidthOption,
    HeightOption,
    FitOption,
    PercentOption,
    OnlyShrinkOption,
    StrictOption,
    QualityOption,
    CompressionOption,
    AutoOrientOption,
    NoAutoOrientOption,
    BackgroundOption,
    StripOption,
    KeepProfileOption,
};

int RunFolder(const Arguments& arguments);

} // namespace lumbrix::cli
