// Files and folders that are gone when the work is done, whatever became of it.
#pragma once

#include <atomic>
#include <filesystem>
#include <list>
#include <string>

namespace lumbrix::cli {

// A path that is removed when the program is ended at once, for as long as this object lives. So many can be noted as
// the most jobs need; what is beyond them stays behind.
class Leftover {
  public:
    explicit Leftover(const std::filesystem::path& path);
    ~Leftover();
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;

  private:
    std::atomic<const std::filesystem::path*>* place_ = nullptr;
};

// Removes the files and the then empty folders that are noted. May be called from a signal handler, once, by a program
// that ends then.
void RemoveLeftovers();

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
    Leftover leftover_;
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

    // The path of a file that is to come into the folder. All files in it are to be asked for.
    std::filesystem::path PathOfNew(const std::string& name);

  private:
    std::filesystem::path path_;
    Leftover leftover_;
    std::list<Leftover> files_;
};

} // namespace lumbrix::cli
