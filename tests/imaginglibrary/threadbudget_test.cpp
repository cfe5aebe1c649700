// How the machine's processors are shared out.
#include "imaginglibrary/core/threadbudget.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace imaginglibrary;

void OnAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

TEST(ThreadBudget, ACallerMayHaveAsManyThreadsAsThereAreProcessorsLeft) {
    ThreadBudget budget(3);
    ThreadShare share(budget);
    EXPECT_TRUE(share.TakeAnother());
    EXPECT_TRUE(share.TakeAnother());
    EXPECT_FALSE(share.TakeAnother());
}

TEST(ThreadBudget, WithOneProcessorOrNoneKnownThereIsNoOther) {
    for (const unsigned processors : {0u, 1u}) {
        ThreadBudget budget(processors);
        EXPECT_FALSE(ThreadShare(budget).TakeAnother());
    }
}

TEST(ThreadBudget, AsManyCallersAsProcessorsWorkAlone) {
    ThreadBudget budget(2);
    ThreadShare here(budget);
    OnAnotherThread([&] {
        ThreadShare there(budget);
        EXPECT_FALSE(there.TakeAnother());
    });
    EXPECT_TRUE(here.TakeAnother()) << "the other one is done";
    OnAnotherThread([&] {
        ThreadShare there(budget);
        EXPECT_FALSE(there.TakeAnother());
    });
}

TEST(ThreadBudget, WhatAShareTookComesBackWithIt) {
    ThreadBudget budget(2);
    ThreadShare outer(budget);
    {
        ThreadShare inner(budget);
        EXPECT_TRUE(inner.TakeAnother());
        EXPECT_FALSE(outer.TakeAnother());
    }
    EXPECT_TRUE(outer.TakeAnother());
}

TEST(ThreadBudget, AThreadCountsOnceHoweverManySharesItHolds) {
    ThreadBudget budget(2);
    {
        ThreadShare outer(budget);
        ThreadShare inner(budget);
        EXPECT_TRUE(inner.TakeAnother());
        EXPECT_FALSE(inner.TakeAnother());
    }
    {
        ThreadShare outer(budget);
        { ThreadShare inner(budget); }
        ThreadShare second(budget);
        EXPECT_TRUE(second.TakeAnother()) << "however many there were";
    }
    ThreadShare next(budget);
    EXPECT_TRUE(next.TakeAnother()) << "and is counted anew behind the last of them";
    EXPECT_FALSE(next.TakeAnother());
}

} // namespace
