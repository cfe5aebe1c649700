// The pictures in a folder, and which of them becomes which file.
#pragma once

#include "cli/plan.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace lumbrix::cli {

// Whether a file's extension says that it is a picture which can be read on this system.
bool IsPictureName(const std::filesystem::path& file);

struct FoundFiles {
    std::vector<std::filesystem::path> pictures; // relative to the folder, in no particular order
    std::size_t others = 0;                      // files that are no pictures by their names
    std::vector<std::string> failures;           // a sentence for each folder that could not be listed
};

// Lists a folder, with `isRecursive` its subfolders too. Links to folders are not followed, and the folder `leftOut`,
// which need not be there, is not searched where it lies inside.
FoundFiles SearchFolder(const std::filesystem::path& folder, bool isRecursive, const std::filesystem::path& leftOut);

// The files of a list of names, relative to the folder, each once. A name that leads out of the folder is a failure.
FoundFiles ListedFiles(const std::vector<std::string>& names);

struct FolderOrder {
    std::filesystem::path sourceFolder; // both in full, so that a source can be told from a target
    std::filesystem::path targetFolder;
    std::string word; // the extension of the targets, without its dot
    Collisions collisions = Collisions::Refused;
};

// The files in sorted order, each with its target at the same place below the target folder. `files` are the names of
// pictures relative to the source folder. Looks at names only.
std::vector<PlannedFile> PlanFolder(const FolderOrder& order, std::vector<std::filesystem::path> files,
                                    const KeyFunction& keyOf);

} // namespace lumbrix::cli
