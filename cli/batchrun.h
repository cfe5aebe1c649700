// Works through a plan of files, several at a time, and tells what came of them.
#pragma once

#include "cli/batchoptions.h"
#include "cli/plan.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lumbrix::cli {

// What was found out before the work began.
struct Findings {
    std::vector<std::string> failures; // a sentence for each, told already
    std::size_t passedOver = 0;        // files that are no pictures by their names
};

// Does all files of a plan and makes the folders that their targets lack. A failure is told at once, and the work goes
// on; the wish to stop lets the files under way be finished. Closes with a line of counts or with JSON. Gives the exit
// status.
int RunPlan(const BatchWork& work, const std::vector<PlannedFile>& plan, const Findings& findings = {});

// Does a single file, and makes no folder. Throws Failure and Stopped.
int RunSingle(const BatchWork& work, const PlannedFile& file);

} // namespace lumbrix::cli
