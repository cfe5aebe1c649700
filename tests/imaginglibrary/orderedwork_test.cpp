// Pieces of work done on two threads and taken back in their order.
#include "imaginglibrary/operations/orderedwork.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>

namespace {

using namespace imaginglibrary;

class Piece : public PieceOfWork {
  public:
    explicit Piece(
        int ownNumber, std::function<void()> work = [] {})
        : number(ownNumber), work_(std::move(work)) {}

    void Do() noexcept override {
        work_();
        ++timesDone;
    }

    const int number;
    std::atomic<int> timesDone = 0;

  private:
    std::function<void()> work_;
};

void WaitUntil(const std::function<bool()>& holds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!holds() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(holds());
}

TEST(OrderedWork, GivesEveryPieceBackDoneOnceAndInOrder) {
    OrderedWork work;
    int next = 0;
    for (int i = 0; i < 200; ++i) {
        work.Add(
            std::make_unique<Piece>(i, [i] { std::this_thread::sleep_for(std::chrono::microseconds(i * 37 % 100)); }));
        while (work.Count() > 3) {
            const auto taken = work.TakeFirst();
            EXPECT_EQ(static_cast<Piece&>(*taken).number, next++);
            EXPECT_EQ(static_cast<Piece&>(*taken).timesDone, 1);
        }
    }
    EXPECT_EQ(work.Count(), 3u);
    while (work.Count() > 0) {
        EXPECT_EQ(static_cast<Piece&>(*work.TakeFirst()).number, next++);
    }
    EXPECT_EQ(next, 200);
}

TEST(OrderedWork, OnePieceIsDoneWhereItIsTaken) {
    OrderedWork work;
    std::thread::id where;
    work.Add(std::make_unique<Piece>(0, [&] { where = std::this_thread::get_id(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(work.IsFirstDone());
    work.TakeFirst();
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST(OrderedWork, GoesOnBesideWhoeverAdds) {
    if (std::thread::hardware_concurrency() < 2) {
        GTEST_SKIP() << "one processor: there is nothing beside";
    }
    OrderedWork work;
    std::atomic<int> done = 0;
    for (int i = 0; i < 3; ++i) {
        work.Add(std::make_unique<Piece>(i, [&] { ++done; }));
    }
    WaitUntil([&] { return done == 3 && work.IsFirstDone(); });
    EXPECT_EQ(work.Count(), 3u);
}

// While the other thread is at the first piece, the younger ones are done here.
TEST(OrderedWork, WhoeverWaitsForAPieceDoesYoungerOnes) {
    if (std::thread::hardware_concurrency() < 2) {
        GTEST_SKIP() << "one processor: there is nothing beside";
    }
    OrderedWork work;
    std::atomic<bool> isBegun = false;
    std::atomic<bool> mayEnd = false;
    std::thread::id where;
    work.Add(std::make_unique<Piece>(0, [&] {
        isBegun = true;
        WaitUntil([&] { return mayEnd.load(); });
    }));
    work.Add(std::make_unique<Piece>(1)); // from now on there is the other thread
    WaitUntil([&] { return isBegun.load(); });
    work.Add(std::make_unique<Piece>(2, [&] {
        where = std::this_thread::get_id();
        mayEnd = true;
    }));
    EXPECT_EQ(static_cast<Piece&>(*work.TakeFirst()).number, 0);
    EXPECT_EQ(where, std::this_thread::get_id());
    EXPECT_EQ(static_cast<Piece&>(*work.TakeFirst()).number, 1);
}

TEST(OrderedWork, MayEndWithPiecesLeft) {
    std::atomic<int> done = 0;
    {
        OrderedWork work;
        for (int i = 0; i < 50; ++i) {
            work.Add(std::make_unique<Piece>(i, [&] { ++done; }));
        }
    }
    const int atTheEnd = done;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(done, atTheEnd); // nobody works on
}

} // namespace
