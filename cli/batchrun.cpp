// Works through a plan of files, several at a time, and tells what came of them.
#include "cli/batchrun.h"

#include "cli/fileworker.h"
#include "cli/interrupt.h"
#include "cli/report.h"
#include "cli/system.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <thread>

namespace lumbrix::cli {

namespace {

RunKind KindOf(const BatchWork& work) { return work.isDryRun ? RunKind::Dry : RunKind::Real; }

bool ShowsProgress(const BatchWork& work) { return !work.isQuiet && IsErrorOutputATerminal(); }

// Runs a function on several threads, this one among them.
template <class Function> void RunSideBySide(std::size_t count, const Function& function) {
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() + 1 < count) {
            helpers.emplace_back(function);
        }
    } catch (const std::exception&) { // those that could be started will do
    }
    function();
}

// One result for each planned file. Once somebody asks to stop, the files under way are finished and no other is begun.
std::vector<FileResult> WorkThrough(const BatchWork& work, const std::vector<PlannedFile>& plan) {
    std::vector<FileResult> results(plan.size());
    std::atomic<std::size_t> next{0};
    Progress progress(plan.size(), ShowsProgress(work));
    const FileWorker worker(work, MissingFolders::Made, progress);
    RunSideBySide(std::min(static_cast<std::size_t>(work.jobs), plan.size()), [&] {
        while (!WasInterrupted()) {
            const std::size_t i = next++;
            if (i >= plan.size()) {
                return;
            }
            try {
                results[i] = worker.Attempt(plan[i]);
                progress.Step();
            } catch (const std::exception&) { // not even the reason could be told
                results[i].fate = Fate::Failed;
            }
        }
    });
    return results;
}

} // namespace

int RunPlan(const BatchWork& work, const std::vector<PlannedFile>& plan, const Findings& findings) {
    FinishWhenInterrupted();
    const std::vector<FileResult> results = WorkThrough(work, plan);
    if (MustStop()) {
        throw Stopped{};
    }
    const Record record{plan, results, findings};
    const Counts counts = CountsOf(record);
    if (work.isJson) {
        std::fputs(JsonOf(record, KindOf(work)).c_str(), stdout);
    } else if (!work.isQuiet) {
        std::fputs(CountsLine(counts, KindOf(work)).c_str(), stdout);
    }
    return counts.failed == 0 ? 0 : 1;
}

int RunSingle(const BatchWork& work, const PlannedFile& file) {
    const std::vector<PlannedFile> plan{file};
    std::vector<FileResult> results(1);
    {
        Progress progress(plan.size(), ShowsProgress(work));
        const FileWorker worker(work, MissingFolders::Refused, progress);
        results[0] = work.isJson ? worker.Attempt(file) : worker.Do(file);
    }
    if (MustStop()) {
        throw Stopped{};
    }
    if (work.isJson) {
        std::fputs(JsonOf({plan, results, {}}, KindOf(work)).c_str(), stdout);
    }
    return results[0].fate == Fate::Failed ? 1 : 0;
}

} // namespace lumbrix::cli
