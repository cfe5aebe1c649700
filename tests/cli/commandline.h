// lumbrix-cli run as a process in a folder of its own, and what came of it.
#pragma once

#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

namespace tests {

struct Outcome {
    int status; // -1 where a signal ended it
    std::string output;
    std::string errors;
};

class CommandLine : public testing::Test {
  protected:
    // Every test finds source.bmp: one pixel wide and two high, blue over red.
    CommandLine();

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    // Runs the program; as somebody without special rights where that matters.
    Outcome Run(const std::vector<std::string>& arguments, bool asNobody = false);

    // The same in two steps. `errorOutput` is where the error output goes, or -1 for the file that Wait reads.
    pid_t Start(const std::vector<std::string>& arguments, bool asNobody = false, int errorOutput = -1);
    Outcome Wait(pid_t child);

    void ExpectSuccess(const Outcome& outcome, const std::string& output = "");

    // Expects status 1 and one sentence that names the file and the cause.
    void ExpectFailure(const Outcome& outcome, const std::string& file, const std::string& cause);

    void ExpectWrongUsage(const Outcome& outcome, const std::string& text);

    // The names in a folder below the test's own, "" for that itself, without the program's outputs.
    std::set<std::string> NamesIn(const std::string& name) const;

    TemporaryFolder folder_;
};

} // namespace tests
