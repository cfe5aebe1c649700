// A test with every operation, which the system fails at one call after the other.
#pragma once

#include "tests/faults/faultyfiles.h"
#include "tests/faults/operations.h"
#include "tests/faults/systemerrors.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace tests {

class FaultyOperations : public testing::Test {
  protected:
    FaultyOperations() {
        LoadImagingLibrary();
#ifdef _WIN32
        for (const char* library : {"lumbrix.dll", "gdiplus.dll"}) {
            TakeCallsOfLibrary(library);
        }
#endif
        operations_ = MakeOperations(folder_);
    }
    ~FaultyOperations() override {
        UnloadImagingLibrary();
        std::printf("  failed %d times\n", failures_);
    }

    static std::ptrdiff_t CountOf(const std::filesystem::path& folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }

    // On Windows no file that is open could be written over.
    static std::ptrdiff_t CountOfOpenFiles() {
#ifdef _WIN32
        return 0;
#else
        return CountOf("/proc/self/fd");
#endif
    }

    // Does an operation once for each number until what `begin(number)` has fail is not reached any more; `end` tells
    // whether it was. Gives back how often it failed.
    template <class Begin, class End, class Judge>
    int FailOneByOne(const Operation& operation, const Begin& begin, const End& end, const Judge& judge) {
        constexpr int Most = 100000;
        const int FailedEnough = FailedExpectations() + 3;
        const std::string whole = Whole(operation);
        for (int number = 1; number < Most; number += operation.stride) {
            if (!operation.target.empty()) {
                WriteBytes(operation.target, "old");
            }
            const auto files = CountOf(folder_.Path());
            const auto descriptors = CountOfOpenFiles();
            lumbrix_job job = LUMBRIX_JOB_INIT;
            begin(number);
            const int32_t status = operation.run(&job);
            if (!end()) {
                return number - 1;
            }
            ++failures_;
            SCOPED_TRACE(operation.name + ", number " + std::to_string(number) + ": " + job.message);
            EXPECT_EQ(CountOf(folder_.Path()), files);
            EXPECT_EQ(CountOfOpenFiles(), descriptors);
            ExpectOldOrWhole(operation, status, whole);
            EXPECT_EQ(status == LUMBRIX_OK, std::string(job.message).empty());
            judge(status, std::string(job.message));
            if (FailedExpectations() > FailedEnough) {
                break;
            }
        }
        return Most;
    }

    static int FailedExpectations() {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
    }

    static void ExpectOldOrWhole(const Operation& operation, int32_t status, const std::string& whole) {
        if (!operation.target.empty()) {
            EXPECT_EQ(ReadBytes(operation.target) == (status == LUMBRIX_OK ? whole : "old"), true) << status;
        }
    }

    // What it writes where nothing fails.
    static std::string Whole(const Operation& operation) {
        lumbrix_job job = LUMBRIX_JOB_INIT;
        EXPECT_EQ(operation.run(&job), LUMBRIX_OK) << operation.name << ": " << job.message;
        return operation.target.empty() ? "" : ReadBytes(operation.target);
    }

    TemporaryFolder folder_;
    std::vector<Operation> operations_;
    int failures_ = 0;
};

} // namespace tests
