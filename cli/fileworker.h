// Does one file of a plan.
#pragma once

#include "cli/batchoptions.h"
#include "cli/progress.h"

#include <cstdint>
#include <string>

namespace lumbrix::cli {

enum class Fate { NotReached, Written, Skipped, Failed };

// What came of a file.
struct FileResult {
    Fate fate = Fate::NotReached;
    std::int32_t width = 0; // of the picture that was written, in pixels
    std::int32_t height = 0;
    std::uintmax_t bytes = 0; // of the file that was written
    std::string message;      // why it failed, or what is wrong with its source
};

enum class MissingFolders { Made, Refused };

class FileWorker {
  public:
    FileWorker(const BatchWork& work, MissingFolders missingFolders, Progress& progress)
        : work_(work), missingFolders_(missingFolders), progress_(progress) {}

    // Throws Failure and Stopped. Tells of a source that is not whole.
    FileResult Do(const PlannedFile& file) const;

    // The same, but tells why it failed instead.
    FileResult Attempt(const PlannedFile& file) const;

  private:
    FileResult Write(const PlannedFile& file) const;
    FileResult WouldWrite(const PlannedFile& file) const;
    bool IsLeftAlone(const PlannedFile& file) const;
    FileResult FailedFor(const std::string& reason) const;

    const BatchWork& work_;
    MissingFolders missingFolders_;
    Progress& progress_;
};

} // namespace lumbrix::cli
