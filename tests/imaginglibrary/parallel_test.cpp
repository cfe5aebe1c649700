// Sharing work out over threads.
#include "imaginglibrary/operations/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using imaginglibrary::EndWaitingThreads;
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

// Counts the threads that are alive and have done a job.
std::atomic<int> liveHelpers = 0;
std::atomic<int> helpersEver = 0;

struct CountedHelper {
    CountedHelper() { ++liveHelpers, ++helpersEver; }
    ~CountedHelper() { --liveHelpers; }
    bool isCounted = true;
};

// Long enough for every thread to begin one.
void CountThreads() {
    const auto caller = std::this_thread::get_id();
    InParallel(8, [&](std::size_t) {
        if (std::this_thread::get_id() != caller) {
            thread_local CountedHelper helper;
            EXPECT_TRUE(helper.isCounted);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    });
}

TEST(Parallel, ThreadsAreKeptFromCallToCallUntilTheyAreEnded) {
    EndWaitingThreads();
    helpersEver = 0;
    constexpr int MostHelpers = 3;
    for (int call = 0; call < 20; ++call) {
        CountThreads();
    }
    EXPECT_LE(helpersEver, MostHelpers);
    EXPECT_EQ(helpersEver == 0, std::thread::hardware_concurrency() < 2);
    EXPECT_EQ(liveHelpers, helpersEver);
    EndWaitingThreads();
    EXPECT_EQ(liveHelpers, 0);
    CountThreads();
    EXPECT_EQ(liveHelpers == 0, std::thread::hardware_concurrency() < 2);
    EndWaitingThreads();
    EndWaitingThreads();
    EXPECT_EQ(liveHelpers, 0);
}

TEST(Parallel, SeveralCallersAtOnceAndWorkThatSharesOutItsOwnAreAllServed) {
    std::atomic<int> done = 0;
    const auto call = [&] {
        for (int i = 0; i < 50; ++i) {
            InParallel(10, [&](std::size_t) { InParallel(3, [&](std::size_t) { ++done; }); });
            if (i % 10 == 0) {
                EndWaitingThreads();
            }
        }
    };
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i) {
        callers.emplace_back(call);
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    EXPECT_EQ(done, 4 * 50 * 10 * 3);
}

} // namespace
