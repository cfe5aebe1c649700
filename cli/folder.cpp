// The command that converts every picture of a folder.
#include "cli/folder.h"

#include "cli/causes.h"
#include "cli/errors.h"
#include "cli/folderrun.h"
#include "cli/foldersearch.h"
#include "cli/interrupt.h"
#include "cli/numbers.h"
#include "cli/system.h"

#include <algorithm>
#include <cstdio>
#include <thread>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::int32_t MostJobs = 256;

std::int32_t JobsFrom(const Arguments& arguments) {
    if (const auto jobs = arguments.ValueOf("--jobs")) {
        return WholeNumber(*jobs, "number of jobs", 1, MostJobs);
    }
    return std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, MostJobs);
}

FolderWork WorkFrom(const Arguments& arguments) {
    RequireName(arguments[0]);
    RequireName(arguments[1]);
    FolderWork work;
    work.sourceFolder = PathOf(arguments[0]);
    work.targetFolder = PathOf(arguments[1]);
    work.format = &FormatOfWord(arguments[2]);
    work.height = arguments.Count() > 3 ? PositiveNumber(arguments[3], "height") : 0;
    work.skipsExisting = arguments.Has("--skip-existing");
    work.jobs = JobsFrom(arguments);
    return work;
}

void ExpectFolders(const FolderWork& work) {
    std::error_code error;
    if (!fs::exists(work.sourceFolder, error)) {
        throw Failure{"cannot read " + NameOf(work.sourceFolder) + ": there is no such folder"};
    }
    if (!fs::is_directory(work.sourceFolder, error)) {
        throw Failure{"cannot read " + NameOf(work.sourceFolder) + ": it is no folder"};
    }
    if (fs::exists(work.targetFolder, error) && !fs::is_directory(work.targetFolder, error)) {
        throw Failure{"cannot write into " + NameOf(work.targetFolder) + ": it is no folder"};
    }
}

void PrintFailures(const std::vector<std::string>& foldersNotListed, const std::vector<Outcome>& outcomes) {
    for (const std::string& cause : foldersNotListed) {
        std::fprintf(stderr, "lumbrix-cli: %s\n", cause.c_str());
    }
    for (const Outcome& outcome : outcomes) {
        if (outcome.fate == Fate::Failed) {
            std::fprintf(stderr, "lumbrix-cli: %s\n", outcome.cause.c_str());
        }
    }
}

struct Counts {
    std::size_t written = 0;
    std::size_t skipped = 0;
    std::size_t failed = 0;
    std::size_t passedOver = 0;
    std::size_t notReached = 0;
};

Counts CountsOf(const FoundFiles& found, const std::vector<Outcome>& outcomes) {
    const auto with = [&](Fate fate) {
        return static_cast<std::size_t>(std::count_if(outcomes.begin(), outcomes.end(),
                                                      [&](const Outcome& outcome) { return outcome.fate == fate; }));
    };
    return {with(Fate::Written), with(Fate::Skipped), with(Fate::Failed) + found.failures.size(), found.others,
            with(Fate::NotReached)};
}

void PrintCounts(const Counts& counts) {
    std::printf("%zu written, %zu skipped, %zu failed", counts.written, counts.skipped, counts.failed);
    if (counts.passedOver > 0) {
        std::printf(", %zu passed over", counts.passedOver);
    }
    if (WasInterrupted()) {
        std::printf(", %zu not reached", counts.notReached);
    }
    std::printf("\n");
}

fs::path InFull(const fs::path& folder) { return fs::weakly_canonical(fs::absolute(folder)); }

} // namespace

int RunFolder(const Arguments& arguments) {
    const FolderWork work = WorkFrom(arguments);
    ExpectFolders(work);
    FinishWhenInterrupted();
    const FoundFiles found = SearchFolder(work.sourceFolder, arguments.Has("--recursive"), work.targetFolder);
    const FolderOrder order{InFull(work.sourceFolder), InFull(work.targetFolder), arguments[2]};
    const std::vector<Outcome> outcomes = WorkThrough(work, PlanFolder(order, found.pictures, FileKey));
    PrintFailures(found.failures, outcomes);
    const Counts counts = CountsOf(found, outcomes);
    PrintCounts(counts);
    return counts.failed == 0 ? 0 : 1;
}

} // namespace lumbrix::cli
