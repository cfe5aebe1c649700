// Files and folders that are gone when the work is done, whatever became of it.
#include "cli/temporary.h"

#include "cli/options.h"
#include "cli/system.h"

#include <array>
#include <cstdio>
#include <random>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

// Who takes a path out of its place owns it: a signal handler and the thread that it interrupts never share one.
using Place = std::atomic<const fs::path*>;
static_assert(Place::is_always_lock_free, "it is read where nothing may wait");
std::array<Place, 2048> places{};

// So many possible names that two never meet.
std::string RandomName() {
    std::random_device random;
    char name[32];
    std::snprintf(name, sizeof name, ".lumbrix-%08x%08x", static_cast<unsigned>(random()),
                  static_cast<unsigned>(random()));
    return name;
}

fs::path FreePath(const fs::path& folder, const fs::path& extension) {
    std::error_code error;
    fs::path path;
    do {
        path = folder / RandomName();
        path += extension;
    } while (fs::exists(fs::symlink_status(path, error)));
    return path;
}

} // namespace

Leftover::Leftover(const fs::path& path) {
    std::error_code error;
    fs::path inFull = fs::absolute(path, error); // the current folder may change
    const auto* noted = new fs::path(error ? path : std::move(inFull));
    for (Place& place : places) {
        const fs::path* none = nullptr;
        if (place.compare_exchange_strong(none, noted)) {
            place_ = &place;
            return;
        }
    }
    delete noted;
}

Leftover::~Leftover() {
    if (place_ != nullptr) {
        delete place_->exchange(nullptr);
    }
}

void RemoveLeftovers() {
    static std::array<const fs::path*, places.size()> taken;
    for (std::size_t i = 0; i < places.size(); ++i) {
        taken[i] = places[i].exchange(nullptr);
        if (taken[i] != nullptr) {
            RemoveFileAtOnce(taken[i]->c_str());
        }
    }
    for (const fs::path* path : taken) {
        if (path != nullptr) {
            RemoveFolderAtOnce(path->c_str());
        }
    }
}

TemporaryFile::TemporaryFile(const fs::path& folder, const fs::path& extension)
    : path_(FreePath(folder, extension)), leftover_(path_) {}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
}

TemporaryFolder::TemporaryFolder() : path_(FreePath(FolderForTemporaryFiles(), {})), leftover_(path_) {
    std::error_code error;
    if (!fs::create_directory(path_, error) || error) {
        throw Failure{"cannot make a temporary folder in " + NameOf(path_.parent_path()) + ": " + error.message()};
    }
    fs::permissions(path_, fs::perms::owner_all, error);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::PathOfNew(const std::string& name) {
    const fs::path path = path_ / name;
    files_.emplace_back(path);
    return path;
}

} // namespace lumbrix::cli
