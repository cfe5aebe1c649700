// How often and of what somebody is told who watches a picture being read.
#include "imaginglibrary/core/rowwatch.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace imaginglibrary;
using namespace tests;

using Told = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

class NotingWatch : public RowWatch {
  public:
    explicit NotingWatch(std::size_t most) : most_(most) {}

    bool Tell(std::uint32_t done, std::uint32_t rows) override {
        told.emplace_back(done, rows);
        return told.size() < most_;
    }

    Told told;

  private:
    std::size_t most_;
};

// What is told of a picture, and the status of reading it.
std::pair<Told, Status> ToldOf(std::uint32_t height, std::size_t most = SIZE_MAX) {
    const auto watch = std::make_shared<NotingWatch>(most);
    const Status status = ReadAllRows(*WatchedBy(watch, WhitePicture(1, height)));
    return {watch->told, status};
}

TEST(RowWatch, IsToldOfEveryHundredth) {
    const auto [told, status] = ToldOf(1000);
    EXPECT_EQ(status, Status::Ok);
    ASSERT_EQ(told.size(), 100u);
    for (std::uint32_t i = 0; i < 100; ++i) {
        EXPECT_EQ(told[i], std::pair(10 * (i + 1), 1000u));
    }
}

TEST(RowWatch, IsToldOfEveryRowOfFew) {
    EXPECT_EQ(ToldOf(3).first, (Told{{1, 3}, {2, 3}, {3, 3}}));
    EXPECT_EQ(ToldOf(100).first.size(), 100u);
    const Told told = ToldOf(101).first;
    EXPECT_EQ(told.size(), 100u);
    EXPECT_EQ(told.front(), std::pair(2u, 101u));
    EXPECT_EQ(told.back(), std::pair(101u, 101u));
}

TEST(RowWatch, StopsTheReading) {
    const auto [told, status] = ToldOf(1000, 7);
    EXPECT_EQ(status, Status::Aborted);
    EXPECT_EQ(told.size(), 7u);
}

} // namespace
