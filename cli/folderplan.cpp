// The pictures in a folder, and which of them becomes which file.
#include "cli/folderplan.h"

#include "base/lettercase.h"
#include "cli/system.h"

#include <algorithm>
#include <utility>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* PictureExtensions[] = {
    ".bmp", ".dib", ".rle", ".jpg", ".jpeg", ".jpe", ".jfif", ".gif", ".tif", ".tiff", ".png", ".ico",
#ifdef _WIN32
    ".emf", ".wmf",
#endif
};

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

bool IsPictureName(const fs::path& file) {
    const std::string extension = LowerCase(NameOf(file.extension()));
    return std::find(std::begin(PictureExtensions), std::end(PictureExtensions), extension) !=
           std::end(PictureExtensions);
}

FoundFiles SearchFolder(const fs::path& folder, bool isRecursive, const fs::path& leftOut) {
    Search search(folder, isRecursive, leftOut);
    search.List({});
    return search.Found();
}

FoundFiles ListedFiles(const std::vector<std::string>& names) {
    FoundFiles found;
    for (const std::string& name : names) {
        const fs::path file = PathOf(name).lexically_normal();
        if (file.is_absolute() || file.has_root_path() || *file.begin() == "..") {
            found.failures.push_back("cannot work on " + name + ": it does not lie in the source folder");
        } else {
            found.pictures.push_back(file);
        }
    }
    return found;
}

std::vector<PlannedFile> PlanFolder(const FolderOrder& order, std::vector<fs::path> files, const KeyFunction& keyOf) {
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    std::vector<Intent> intents(files.size());
    std::transform(files.begin(), files.end(), intents.begin(), [&](const fs::path& file) {
        const fs::path target = TargetIn(file.parent_path(), file, order.word);
        return Intent{file, target, order.sourceFolder / file, order.targetFolder / target};
    });
    return Plan(intents, keyOf, order.collisions);
}

} // namespace lumbrix::cli
