// Sharing work out over threads.
#include "imaginglibrary/operations/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace {

using imaginglibrary::InParallel;

TEST(Parallel, EveryJobIsDoneOnce) {
    for (const std::size_t jobs : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{1000}}) {
        std::vector<std::atomic<int>> done(jobs + 1);
        InParallel(jobs, [&](std::size_t job) { ++done.at(job); });
        for (std::size_t job = 0; job < jobs; ++job) {
            EXPECT_EQ(done[job], 1) << job << " of " << jobs;
        }
        EXPECT_EQ(done[jobs], 0);
    }
}

TEST(Parallel, ExceptionOfAJobReachesTheCallerAndEndsTheRest) {
    for (const std::size_t failing : {std::size_t{0}, std::size_t{5}}) {
        std::atomic<int> done = 0;
        const auto work = [&](std::size_t job) {
            if (job >= failing) {
                throw std::runtime_error("no more");
            }
            ++done;
        };
        EXPECT_THROW(InParallel(100000, work), std::runtime_error);
        EXPECT_LE(done, static_cast<int>(failing));
    }
}

} // namespace
