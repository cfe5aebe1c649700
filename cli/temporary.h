// Files and folders that are gone when the work is done, whatever became of it.
#pragma once

#include <filesystem>
#include <string>

namespace lumbrix::cli {

// A name that no file in a folder has; a file that comes to stand there is removed in the end.
class TemporaryFile {
  public:
    TemporaryFile(const std::filesystem::path& folder, const std::filesystem::path& extension);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// A new folder in the system's folder for temporary files, closed to other people. Throws Failure where none can be
// made.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace lumbrix::cli
