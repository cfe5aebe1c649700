// The command that converts every picture of a folder.
#pragma once

#include "cli/batchoptions.h"
#include "cli/options.h"

namespace lumbrix::cli {

inline constexpr Option FolderOptions[] = {
    {"--recursive", nullptr, "search the subfolders too, and keep their layout", 'r'},
    {"--list", "FILE",
     "instead of searching, read names from FILE, one a line and relative to SOURCE_FOLDER, from the standard input "
     "where "
     "it is -",
     0, Offer::Files},
    {"--skip-existing", nullptr, "an older name of --skip"},
};

int RunFolder(const Arguments& arguments);

} // namespace lumbrix::cli
