// Many operations in one process: nothing grows. LOAD in the environment says how many.
#include "tests/faults/faultymemory.h"
#include "tests/faults/operations.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

using namespace tests;

struct Held {
    long allocations;
    std::ptrdiff_t descriptors;
    std::ptrdiff_t threads;
    long kibibytes;
};

long KibibytesInUse() {
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    file >> pages >> resident;
    return resident * 4;
}

Held WhatIsHeld() {
    const auto count = [](const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    return {LivingAllocations(), count("/proc/self/fd"), count("/proc/self/task"), KibibytesInUse()};
}

TEST(Load, ManyOperationsLeaveNothingBehind) {
    const char* wanted = std::getenv("LOAD");
    const int count = wanted != nullptr ? std::atoi(wanted) : 500;
    LoadImagingLibrary();
    {
        const TemporaryFolder folder;
        const std::vector<Operation> operations = MakeOperations(folder);
        const auto run = [&](int from, int to) {
            for (int i = from; i < to; ++i) {
                const Operation& operation = operations[static_cast<std::size_t>(i) % operations.size()];
                EXPECT_EQ(operation.run(nullptr), LUMBRIX_OK) << operation.name;
            }
        };
        const int warmUp = 2 * static_cast<int>(operations.size());
        run(0, warmUp);
        const Held before = WhatIsHeld();
        run(warmUp, warmUp + count);
        const Held after = WhatIsHeld();
        std::printf("%d operations: %+ld allocations, %+td descriptors, %+td threads, %+ld KiB\n", count,
                    after.allocations - before.allocations, after.descriptors - before.descriptors,
                    after.threads - before.threads, after.kibibytes - before.kibibytes);
        EXPECT_LT(after.allocations - before.allocations, 50);
        EXPECT_EQ(after.descriptors, before.descriptors);
        EXPECT_LE(after.threads, before.threads + 1);
        EXPECT_LT(after.kibibytes - before.kibibytes, 4096);
    }
    UnloadImagingLibrary();
}

// Sources that do not load, and targets that cannot be written.
TEST(Load, ManyFailuresLeaveNothingBehind) {
    LoadImagingLibrary();
    const TemporaryFolder folder;
    WriteBytes(folder / "broken.png", "Dear Sir or Madam");
    MakeOperations(folder);
    const auto fail = [&] {
        for (const char* source : {"broken.png", "missing.png", "source.png"}) {
            EXPECT_NE(lumbrix_convert((folder / source).c_str(), (folder / "no/a.gif").c_str(), nullptr), LUMBRIX_OK);
        }
    };
    fail();
    const Held before = WhatIsHeld();
    for (int i = 0; i < 200; ++i) {
        fail();
    }
    const Held after = WhatIsHeld();
    EXPECT_LT(after.allocations - before.allocations, 20);
    EXPECT_EQ(after.descriptors, before.descriptors);
    UnloadImagingLibrary();
}

} // namespace
