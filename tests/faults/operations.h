// Every operation of the library on small pictures in a folder, so that each can be done again and again while the
// system fails.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "tests/support/temporaryfolder.h"

#include <functional>
#include <string>
#include <vector>

namespace tests {

// One that writes has its target named; it is given an older file there.
struct Operation {
    std::string name;
    std::string target; // empty for one that only reads
    std::function<int32_t(lumbrix_job*)> run;
    int stride = 1;                               // of those that take long only some failures are tried
    std::vector<std::string> frailLibraries = {}; // which end the process where they lack memory
};

// Pictures of all formats, "source.bmp" and so on, one with a date, and the operations on them. The imaging library
// must be loaded; the folder must outlive the operations.
std::vector<Operation> MakeOperations(const TemporaryFolder& folder);

} // namespace tests
