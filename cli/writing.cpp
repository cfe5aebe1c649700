// Files that are written whole or not at all, by operations that do not tell whether they wrote.
#include "cli/writing.h"

#include "cli/causes.h"
#include "cli/options.h"
#include "cli/sources.h"
#include "cli/system.h"
#include "cli/temporary.h"

#include <filesystem>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

// Behind a symbolic link it is the picture that is replaced, not the link.
fs::path PlaceOf(const fs::path& target) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(target, error))) {
        return target;
    }
    const fs::path place = fs::canonical(target, error);
    return error ? target : place;
}

// Where an older picture is at stake, the new one gets its permissions, and must be on the disk before it takes that
// one's name.
bool PrepareToReplace(const fs::path& older, const fs::path& newer) {
    std::error_code error;
    fs::permissions(newer, fs::status(older, error).permissions(), error);
    return FlushToDisk(newer);
}

bool MoveIntoPlace(const fs::path& file, const fs::path& place) {
    std::error_code error;
    if (fs::exists(place, error) && !PrepareToReplace(place, file)) {
        return false;
    }
    fs::rename(file, place, error);
    return !error;
}

} // namespace

void WriteInOneStep(const std::string& source, const std::string& target,
                    const std::function<std::int32_t(const std::string& temporary)>& write) {
    SizeOf(source); // a source that cannot be read is named first
    ExpectReplaceable(source, target);
    const fs::path place = PlaceOf(PathOf(target));
    const TemporaryFile temporary(place.parent_path(), PathOf(target).extension());
    const std::int32_t status = write(NameOf(temporary.Path()));
    std::error_code error;
    if (status != 0 || !fs::is_regular_file(temporary.Path(), error)) {
        ExpectIntact(source);
        ThrowNotWritten(status, source, target);
    }
    if (!MoveIntoPlace(temporary.Path(), place)) {
        throw Failure{"cannot write " + target + ": the system failed to put it into its place"};
    }
}

} // namespace lumbrix::cli
