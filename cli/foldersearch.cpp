// The pictures in a folder.
#include "cli/foldersearch.h"

#include "cli/folderplan.h"
#include "cli/system.h"

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

class Search {
  public:
    Search(const fs::path& folder, bool isRecursive, const fs::path& leftOut)
        : folder_(folder), isRecursive_(isRecursive), leftOut_(leftOut) {}

    // Goes through the folder under a relative name.
    void List(const fs::path& relative) {
        std::error_code error;
        const fs::path folder = relative.empty() ? folder_ : folder_ / relative;
        for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error)) {
            Visit(*entry, relative / entry->path().filename());
        }
        if (error) {
            found_.failures.push_back("cannot read the folder " + NameOf(folder) + ": " + error.message());
        }
    }

    FoundFiles Found() { return std::move(found_); }

  private:
    void Visit(const fs::directory_entry& entry, const fs::path& relative) {
        std::error_code error;
        if (entry.is_directory(error)) {
            if (isRecursive_ && !entry.is_symlink(error) && !fs::equivalent(entry.path(), leftOut_, error)) {
                List(relative);
            }
        } else if (IsPictureName(relative)) {
            found_.pictures.push_back(relative);
        } else {
            ++found_.others;
        }
    }

    const fs::path& folder_;
    bool isRecursive_;
    const fs::path& leftOut_;
    FoundFiles found_;
};

} // namespace

FoundFiles SearchFolder(const fs::path& folder, bool isRecursive, const fs::path& leftOut) {
    Search search(folder, isRecursive, leftOut);
    search.List({});
    return search.Found();
}

} // namespace lumbrix::cli
