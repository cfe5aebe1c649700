// The pictures in a folder.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace lumbrix::cli {

struct FoundFiles {
    std::vector<std::filesystem::path> pictures; // relative to the folder, in no particular order
    std::size_t others = 0;                      // files that are no pictures by their names
    std::vector<std::string> failures;           // a sentence for each folder that could not be listed
};

// Lists a folder, with `isRecursive` its subfolders too. Links to folders are not followed, and the folder `leftOut`,
// which need not be there, is not searched where it lies inside.
FoundFiles SearchFolder(const std::filesystem::path& folder, bool isRecursive, const std::filesystem::path& leftOut);

} // namespace lumbrix::cli
