// Every operation, with the system failing it at every single allocation.
#include "tests/faults/faultymemory.h"
#include "tests/faults/operationsfixture.h"

namespace {

using namespace tests;

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
