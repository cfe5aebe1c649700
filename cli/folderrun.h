// Carries out what was planned for a folder, several files at a time.
#pragma once

#include "cli/folderplan.h"
#include "cli/formats.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix::cli {

struct FolderWork {
    std::filesystem::path sourceFolder; // as they were given, for messages to name files that way
    std::filesystem::path targetFolder;
    const Format* format = nullptr;
    std::int32_t height = 0; // pictures higher than this are made smaller; 0 for none
    bool skipsExisting = false;
    std::int32_t jobs = 1;
};

enum class Fate { NotReached, Written, Skipped, Failed };

struct Outcome {
    Fate fate = Fate::NotReached;
    std::string cause; // a sentence, for a failed one
};

// One outcome for each planned file. Once somebody asks to stop, the files under way are finished and no other is
// begun.
std::vector<Outcome> WorkThrough(const FolderWork& work, const std::vector<PlannedFile>& plan);

} // namespace lumbrix::cli
