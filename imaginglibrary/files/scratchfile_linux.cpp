// The names that saves use on Linux in between, and what is left of saves that were killed.
#include "imaginglibrary/files/scratchfile_linux.h"

#include "imaginglibrary/files/filelock_linux.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <new>
#include <random>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace imaginglibrary {

namespace {

constexpr std::string_view Beginning = ".imaging-";
constexpr std::string_view End = ".tmp";

bool IsScratchName(std::string_view name) {
    if (!name.starts_with(Beginning) || !name.ends_with(End) || name.size() <= Beginning.size() + End.size()) {
        return false;
    }
    const std::string_view number = name.substr(Beginning.size(), name.size() - Beginning.size() - End.size());
    return std::all_of(number.begin(), number.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

bool IsOfAnEarlierDay(const struct stat& facts) {
    constexpr time_t Day = 24 * 60 * 60;
    return facts.st_mtime < time(nullptr) - Day;
}

void DeleteIfLeft(const std::string& path) {
    struct stat facts {};
    if (lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && IsOfAnEarlierDay(facts) && !IsLocked(path)) {
        unlink(path.c_str());
    }
}

// Whether nobody has asked for this folder before.
bool IsNew(const std::string& folder) {
    static std::mutex mutex;
    static std::set<std::string> known;
    const std::lock_guard lock(mutex);
    return known.insert(folder).second;
}

} // namespace

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

std::string ScratchNameBeside(const std::string& target) {
    std::random_device random;
    return FolderOf(target) + "/" + std::string(Beginning) + std::to_string(random()) + std::string(End);
}

void SweepBeside(const std::string& target) noexcept {
    try {
        const std::string folder = FolderOf(target);
        if (!IsNew(folder)) {
            return;
        }
        const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
        for (const dirent* entry = nullptr; listing && (entry = readdir(listing.get())) != nullptr;) {
            if (IsScratchName(entry->d_name)) {
                DeleteIfLeft(folder + "/" + entry->d_name);
            }
        }
    } catch (const std::bad_alloc&) { // what is left stays until the next time
    }
}

} // namespace imaginglibrary
