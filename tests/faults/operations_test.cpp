// Every operation, with the system failing it at every single call on files.
#include "tests/faults/operationsfixture.h"

namespace {

using namespace tests;

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

TEST_F(FaultyOperations, FileThatCannotTakeTheTargetsPlaceLeavesTheOldOne) {
    for (const FileCall call : {FileCall::Flush, FileCall::Name, FileCall::Rename}) {
        for (const Operation& operation : operations_) {
            const int failures = FailOneByOne(
                operation,
                [&](int number) {
                    BeginFileFault({call, number, DiskFullError});
                },
                EndFileFault, [](int32_t status, const std::string&) { EXPECT_EQ(status, LUMBRIX_WIN32_ERROR); });
            EXPECT_EQ(failures > 0, !operation.target.empty()) << operation.name << ", " << static_cast<int>(call);
        }
    }
}

} // namespace
