// The pictures in a folder, and which of them becomes which file.
#include "cli/folderplan.h"

#include "base/lettercase.h"
#include "cli/system.h"

#include <algorithm>
#include <map>
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

fs::path TargetOf(const fs::path& file, const std::string& word) {
    fs::path target = file.parent_path() / file.stem();
    target += "." + word;
    return target;
}

class Planner {
  public:
    Planner(const FolderOrder& order, const std::vector<fs::path>& files, const KeyFunction& keyOf)
        : order_(order), keyOf_(keyOf) {
        for (const fs::path& file : files) {
            sources_[keyOf_(order_.sourceFolder / file)] = file;
        }
    }

    PlannedFile Plan(const fs::path& file) {
        const fs::path target = TargetOf(file, order_.word);
        const fs::path key = keyOf_(order_.targetFolder / target);
        if (const auto standing = sources_.find(key); standing != sources_.end()) {
            const Obstacle obstacle = standing->second == file ? Obstacle::ItIsTheSource : Obstacle::OtherSource;
            return {file, target, obstacle, standing->second};
        }
        const auto& [first, isFirst] = targets_.try_emplace(key, file);
        return isFirst ? PlannedFile{file, target} : PlannedFile{file, target, Obstacle::SameTarget, first->second};
    }

  private:
    const FolderOrder& order_;
    const KeyFunction& keyOf_;
    std::map<fs::path, fs::path> sources_; // by their keys
    std::map<fs::path, fs::path> targets_; // the source that has each key's target
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

std::vector<PlannedFile> PlanFolder(const FolderOrder& order, std::vector<fs::path> files, const KeyFunction& keyOf) {
    std::sort(files.begin(), files.end());
    Planner planner(order, files, keyOf);
    std::vector<PlannedFile> plan(files.size());
    std::transform(files.begin(), files.end(), plan.begin(), [&](const fs::path& file) { return planner.Plan(file); });
    return plan;
}

} // namespace lumbrix::cli
