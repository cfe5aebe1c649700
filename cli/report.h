// What is printed behind a run over several files.
#pragma once

#include "cli/batchrun.h"
#include "cli/fileworker.h"

namespace lumbrix::cli {

// What became of files. `results` are those of `plan`, in its order.
struct Record {
    const std::vector<PlannedFile>& plan;
    const std::vector<FileResult>& results;
    const Findings& findings;
};

struct Counts {
    std::size_t written = 0;
    std::size_t skipped = 0;
    std::size_t failed = 0;
    std::size_t passedOver = 0;
    std::size_t notReached = 0;
};

Counts CountsOf(const Record& record);

enum class RunKind { Real, Dry };

// "2 written, 1 skipped, 0 failed", and more where there is more to tell.
std::string CountsLine(const Counts& counts, RunKind kind);

// An object with an array "files" and the counts.
std::string JsonOf(const Record& record, RunKind kind);

} // namespace lumbrix::cli
