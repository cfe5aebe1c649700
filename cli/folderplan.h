// What a run over a folder is going to do: which file becomes which. Looks at names only.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace lumbrix::cli {

// Whether a file's extension says that it is a picture which can be read on this system.
bool IsPictureName(const std::filesystem::path& file);

struct FolderOrder {
    std::filesystem::path sourceFolder; // both in full, so that a source can be told from a target
    std::filesystem::path targetFolder;
    std::string word; // the extension of the targets, without its dot
};

enum class Obstacle {
    None,
    ItIsTheSource, // the file would become its own target
    OtherSource,   // another source stands where the target would be
    SameTarget,    // another source, which comes first, has the same target
};

struct PlannedFile {
    std::filesystem::path source; // relative to the source folder
    std::filesystem::path target; // relative to the target folder
    Obstacle obstacle = Obstacle::None;
    std::filesystem::path other; // the other source, if there is one in the way
};

// Two paths with the same key are the same file.
using KeyFunction = std::function<std::filesystem::path(const std::filesystem::path& path)>;

// The files in sorted order, each with its target at the same place below the target folder. `files` are the names of
// pictures relative to the source folder.
std::vector<PlannedFile> PlanFolder(const FolderOrder& order, std::vector<std::filesystem::path> files,
                                    const KeyFunction& keyOf);

} // namespace lumbrix::cli
