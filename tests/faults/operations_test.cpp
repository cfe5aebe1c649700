// Every operation, with the system failing it at every single call and allocation.
#include "tests/faults/faultyfiles.h"
#include "tests/faults/faultymemory.h"
#include "tests/faults/operations.h"
#include "tests/faults/systemerrors.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

class FaultyOperations : public testing::Test {
  protected:
    FaultyOperations() {
        LoadImagingLibrary();
        operations_ = MakeOperations(folder_);
    }
    ~FaultyOperations() override { UnloadImagingLibrary(); }

    static std::ptrdiff_t CountOf(const std::filesystem::path& folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
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
            const auto descriptors = CountOf("/proc/self/fd");
            lumbrix_job job = LUMBRIX_JOB_INIT;
            begin(number);
            const int32_t status = operation.run(&job);
            if (!end()) {
                return number - 1;
            }
            SCOPED_TRACE(operation.name + ", number " + std::to_string(number) + ": " + job.message);
            EXPECT_EQ(CountOf(folder_.Path()), files);
            EXPECT_EQ(CountOf("/proc/self/fd"), descriptors);
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
};

TEST_F(FaultyOperations, FullDiskAtAnyWriteLeavesTheOldFileAndSaysSo) {
    for (const Failing failing : {Failing::Once, Failing::Halfway}) {
        for (const Operation& operation : operations_) {
            const int failures = FailOneByOne(
                operation,
                [&](int number) {
                    BeginFileFault({FileCall::Write, number, DiskFullError, failing});
                },
                EndFileFault,
                [](int32_t status, const std::string& message) {
                    EXPECT_EQ(status, LUMBRIX_WIN32_ERROR);
                    EXPECT_NE(message.find("disk may be full"), std::string::npos);
                });
            EXPECT_EQ(failures > 0, !operation.target.empty()) << operation.name;
        }
    }
}

TEST_F(FaultyOperations, FileThatCannotBeOpenedLeavesTheOldFile) {
    for (const Operation& operation : operations_) {
        const int failures = FailOneByOne(
            operation,
            [&](int number) {
                BeginFileFault({FileCall::Open, number, TooManyFilesError});
            },
            EndFileFault, [](int32_t, const std::string&) {});
        EXPECT_GT(failures, 0) << operation.name;
    }
}

TEST_F(FaultyOperations, MissingMemoryLeavesTheOldFileAndNoMemoryBehind) {
    const auto names = [](const std::string& message, const char* cause) {
        return message.find(cause) != std::string::npos;
    };
    for (const Operation& operation : operations_) {
        SpareLibraries(operation.frailLibraries);
        Whole(operation); // some of what is made by the first is kept
        const long before = LivingAllocations();
        const int failures = FailOneByOne(
            operation, [&](int number) { BeginMemoryFault(number, Failing::Once); }, EndMemoryFault,
            [&](int32_t status, const std::string& message) {
                // A font whose file could not be read for want of memory counts as missing.
                EXPECT_TRUE(status == LUMBRIX_OK || names(message, "memory") || names(message, "damaged") ||
                            (operation.name == "annotate" && names(message, "not installed")));
            });
        EXPECT_GT(failures, 10) << operation.name;
        EXPECT_LT(LivingAllocations() - before, 60) << operation.name << ", after " << failures;
    }
}

// From some allocation on there is none at all.
TEST_F(FaultyOperations, NoMemoryAnyMoreLeavesTheOldFile) {
    for (const Operation& operation : operations_) {
        if (operation.frailLibraries.empty()) {
            FailOneByOne(
                operation, [&](int number) { BeginMemoryFault(number, Failing::Onwards); }, EndMemoryFault,
                [](int32_t, const std::string&) {});
        }
    }
}

} // namespace
