// Files and folders that are gone when the work is done, whatever became of it.
#include "cli/temporary.h"

#include "cli/errors.h"
#include "cli/system.h"

#include <cstdint>
#include <cstdio>
#include <random>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

// So many possible names that two never meet.
std::string RandomName() {
    std::random_device random;
    char name[32];
    std::snprintf(name, sizeof name, ".lumbrix-%08x%08x", static_cast<unsigned>(random()),
                  static_cast<unsigned>(random()));
    return name;
}

Failure NoTemporaryFolder(const fs::path& parent, const std::error_code& error) {
    return {"cannot make a temporary folder in " + NameOf(parent) + ": " + error.message()};
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path& folder, const fs::path& extension) {
    std::error_code error;
    do {
        path_ = folder / RandomName();
        path_ += extension;
    } while (fs::exists(fs::symlink_status(path_, error)));
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
}

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    path_ = parent / RandomName();
    if (error || !fs::create_directory(path_, error) || error) {
        throw NoTemporaryFolder(parent, error);
    }
    fs::permissions(path_, fs::perms::owner_all, error);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace lumbrix::cli
