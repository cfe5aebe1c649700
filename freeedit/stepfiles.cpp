// The numbered bitmaps that editing leaves beside the output file, and getting rid of them.
#include "freeedit/stepfiles.h"

#include "imaging/paths.h"
#include "platform/files.h"
#include "platform/registry.h"

#include <algorithm>

namespace lumbrix {

namespace {

constexpr const char* Key = "SOFTWARE\\Lumbrix";
constexpr const char* ListValue = "Delete";
constexpr char Separator = '|';

// A hand-over to drawing uses numbers beyond the counter.
constexpr std::int32_t NumbersBeyond = 3;

} // namespace

std::string StepFile(const std::string& output, std::int32_t n) {
    return AddBackslash(FolderPart(output)) + BaseNamePart(output) + std::to_string(n) + ".bmp";
}

void RemoveStepFiles(const StepFiles& stepFiles, SettingsStore& store) {
    const std::string output = stepFiles.owner == nullptr ? std::string() : stepFiles.owner->Target();
    std::string list;
    for (std::int32_t n = 1; n <= stepFiles.counter + NumbersBeyond; ++n) {
        const std::string file = StepFile(output, n);
        if (TryToRemoveFile(file) == 0) {
            continue;
        }
        if (FileExists(file)) {
            list += (list.empty() ? std::string() : std::string(1, Separator)) + file;
        }
        SetRegValue(CurrentUserRoot, Key, ListValue, list, store);
    }
}

void RunPendingDeletes(SettingsStore& store) {
    const std::string list = GetRegValue(CurrentUserRoot, Key, ListValue, store);
    if (list.empty()) {
        return;
    }
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(Separator, start), list.size());
        TryToRemoveFile(list.substr(start, end - start)); // what is still held is forgotten
        start = end + 1;
    }
    DeleteRegValue(CurrentUserRoot, Key, ListValue, store);
}

} // namespace lumbrix
