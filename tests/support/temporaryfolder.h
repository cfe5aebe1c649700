// A folder that exists for one test and is gone behind it.
#pragma once

#include <filesystem>
#include <string>

namespace tests {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    // The full path of a name inside the folder.
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

// While it lives the system's folder for temporary files is another one.
class TemporaryFilesIn {
  public:
    explicit TemporaryFilesIn(const std::filesystem::path& folder);
    ~TemporaryFilesIn();
    TemporaryFilesIn(const TemporaryFilesIn&) = delete;
    TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;

  private:
    std::filesystem::path before_;
};

// Whole files as strings of bytes. Both throw if the file cannot be opened.
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);
std::string ReadBytes(const std::filesystem::path& path);

} // namespace tests
