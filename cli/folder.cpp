// The command that converts every picture of a folder, several files at a time.
#include "cli/folder.h"

#include "cli/batchrun.h"
#include "cli/folderplan.h"
#include "cli/formats.h"
#include "cli/interrupt.h"
#include "cli/sizing.h"
#include "cli/system.h"
#include "cli/text.h"

#include <algorithm>
#include <cstdio>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

struct Folders {
    fs::path source; // as they were given, for messages to name files that way
    fs::path target;
};

Folders FoldersFrom(const Arguments& arguments) {
    RequireName(arguments[0]);
    RequireName(arguments[1]);
    return {PathOf(arguments[0]), PathOf(arguments[1])};
}

BatchWork WorkFrom(const Arguments& arguments) {
    const auto size = SizeFrom(arguments.Count() > 3 ? std::optional(arguments[3]) : std::nullopt, arguments);
    const auto convert = [size](const char* source, const char* target, lumbrix_job* job) {
        return size ? lumbrix_fit(source, target, &*size, job) : lumbrix_convert(source, target, job);
    };
    BatchWork work = BatchWorkFrom(arguments, convert, size ? Upright::Usually : Upright::WhereAsked);
    work.format = FormatOfWord(arguments[2]);
    work.job.OnlyShrink();
    return work;
}

void ExpectFolders(const Folders& folders) {
    std::error_code error;
    if (!fs::exists(folders.source, error)) {
        throw Failure{"cannot read " + NameOf(folders.source) + ": there is no such folder"};
    }
    if (!fs::is_directory(folders.source, error)) {
        throw Failure{"cannot read " + NameOf(folders.source) + ": it is not a folder"};
    }
    if (fs::exists(folders.target, error) && !fs::is_directory(folders.target, error)) {
        throw Failure{"cannot write into " + NameOf(folders.target) + ": it is not a folder"};
    }
}

FoundFiles FilesIn(const Folders& folders, const Arguments& arguments) {
    const auto list = arguments.ValueOf(ListOption.name);
    return list ? ListedFiles(NamesInList(*list))
                : SearchFolder(folders.source, arguments.Has("--recursive"), folders.target);
}

fs::path InFull(const fs::path& folder) { return fs::weakly_canonical(fs::absolute(folder)); }

// Names become what they are seen from the current folder.
void PutInto(const Folders& folders, std::vector<PlannedFile>& plan) {
    for (PlannedFile& file : plan) {
        file.source = folders.source / file.source;
        file.target = folders.target / file.target;
        file.other = folders.source / file.other;
    }
}

} // namespace

int RunFolder(const Arguments& arguments) {
    const Folders folders = FoldersFrom(arguments);
    const BatchWork work = WorkFrom(arguments);
    ExpectFolders(folders);
    FinishWhenInterrupted();
    const FoundFiles found = FilesIn(folders, arguments);
    for (const std::string& failure : found.failures) {
        std::fputs(MessageLine(failure).c_str(), stderr);
    }
    const FolderOrder order{InFull(folders.source), InFull(folders.target), arguments[2], work.collisions};
    std::vector<PlannedFile> plan = PlanFolder(order, found.pictures, FileKey);
    PutInto(folders, plan);
    return RunPlan(work, plan, {found.failures, found.others});
}

} // namespace lumbrix::cli
