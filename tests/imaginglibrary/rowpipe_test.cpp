// Moving rows with a thread at each end.
#include "imaginglibrary/core/rowpipe.h"

#include "imaginglibrary/core/threadbudget.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace imaginglibrary;

// Each row is full of its number; may fail or throw at one.
class NumberedRows : public RowReader {
  public:
    NumberedRows(std::size_t rowBytes, std::uint32_t* rowsRead, std::uint32_t failingRow = ~0u,
                 std::uint32_t throwingRow = ~0u)
        : rowBytes_(rowBytes), rowsRead_(rowsRead), failingRow_(failingRow), throwingRow_(throwingRow) {}

    Status ReadRow(std::uint8_t* row) override {
        const std::uint32_t number = (*rowsRead_)++;
        if (number == throwingRow_) {
            throw std::runtime_error("reading");
        }
        std::fill_n(row, rowBytes_, static_cast<std::uint8_t>(number * 7));
        thread = std::this_thread::get_id();
        return number == failingRow_ ? Status::OutOfMemory : Status::Ok;
    }

    static inline std::thread::id thread;

  private:
    std::size_t rowBytes_;
    std::uint32_t* rowsRead_;
    std::uint32_t failingRow_;
    std::uint32_t throwingRow_;
};

class RowPipes : public testing::Test {
  protected:
    // Expects every row in its order.
    Status Pipe(std::size_t rowBytes, std::uint32_t count, std::uint32_t failingRow = ~0u,
                std::uint32_t throwingRow = ~0u) {
        std::unique_ptr<RowReader> rows = std::make_unique<NumberedRows>(rowBytes, &rowsRead_, failingRow, throwingRow);
        return PipeRows(std::move(rows), rowBytes, count, [&](std::uint32_t y, const std::uint8_t* row) {
            EXPECT_EQ(y, rowsUsed_++);
            const std::vector<std::uint8_t> expected(rowBytes, static_cast<std::uint8_t>(y * 7));
            EXPECT_TRUE(std::equal(expected.begin(), expected.end(), row)) << y;
            userThread_ = std::this_thread::get_id();
            if (y == throwingUse_) {
                throw std::runtime_error("using");
            }
            return y == failingUse_ ? Status::Win32Error : Status::Ok;
        });
    }

    static constexpr std::size_t RowBytes = 10000; // thirteen rows to a strip

    std::uint32_t rowsRead_ = 0;
    std::uint32_t rowsUsed_ = 0;
    std::uint32_t failingUse_ = ~0u;
    std::uint32_t throwingUse_ = ~0u;
    std::thread::id userThread_;
};

TEST_F(RowPipes, MoveEveryRowInOrder) {
    // Whole strips, one row more, one less; few and many.
    for (const std::uint32_t count : {105u, 130u, 131u, 129u, 1000u}) {
        rowsRead_ = rowsUsed_ = 0;
        EXPECT_EQ(Pipe(RowBytes, count), Status::Ok);
        EXPECT_EQ(rowsRead_, count);
        EXPECT_EQ(rowsUsed_, count);
    }
}

TEST_F(RowPipes, MoveRowsLongerThanAStrip) {
    EXPECT_EQ(Pipe(300000, 9), Status::Ok);
    EXPECT_EQ(rowsUsed_, 9u);
}

TEST_F(RowPipes, ReadHereAndUseElsewhere) {
    if (std::thread::hardware_concurrency() < 2) {
        GTEST_SKIP() << "one processor: both are done here";
    }
    Pipe(RowBytes, 200);
    EXPECT_EQ(NumberedRows::thread, std::this_thread::get_id());
    EXPECT_NE(userThread_, std::this_thread::get_id());
}

TEST_F(RowPipes, StayHereForAFewRows) {
    Pipe(1024, 1023); // one row below a mebibyte
    EXPECT_EQ(userThread_, std::this_thread::get_id());
}

TEST_F(RowPipes, EndWhereReadingFails) {
    EXPECT_EQ(Pipe(RowBytes, 500, 300), Status::OutOfMemory);
    EXPECT_EQ(rowsRead_, 301u);
    EXPECT_LE(rowsUsed_, 300u);
}

TEST_F(RowPipes, EndWhereReadingFailsWhileTheOtherEndWaitsForMore) {
    static constexpr std::uint32_t GoodRows = 130; // ten strips
    std::atomic<std::uint32_t> used{0};
    class LateFailure : public RowReader {
      public:
        explicit LateFailure(const std::atomic<std::uint32_t>& used) : used_(used) {}

        Status ReadRow(std::uint8_t* /*row*/) override {
            if (read_++ < GoodRows) {
                return Status::Ok;
            }
            while (used_ < GoodRows) {
                std::this_thread::yield();
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50)); // so that it waits by now
            return Status::OutOfMemory;
        }

      private:
        const std::atomic<std::uint32_t>& used_;
        std::uint32_t read_ = 0;
    };
    std::unique_ptr<RowReader> rows = std::make_unique<LateFailure>(used);
    const auto use = [&](std::uint32_t, std::uint8_t*) {
        ++used;
        return Status::Ok;
    };
    EXPECT_EQ(PipeRows(std::move(rows), RowBytes, 500, use), Status::OutOfMemory);
    EXPECT_EQ(used, GoodRows);
}

TEST_F(RowPipes, EndWhereUsingFails) {
    failingUse_ = 100;
    EXPECT_EQ(Pipe(RowBytes, 100000), Status::Win32Error);
    EXPECT_EQ(rowsUsed_, 101u);
    EXPECT_LT(rowsRead_, 100u + 6 * 13); // the strips that were under way
}

TEST_F(RowPipes, ThrowWhatIsThrownAtEitherEnd) {
    EXPECT_THROW(Pipe(RowBytes, 500, ~0u, 250), std::runtime_error);
    rowsRead_ = rowsUsed_ = 0;
    throwingUse_ = 100;
    EXPECT_THROW(Pipe(RowBytes, 500), std::runtime_error);
    EXPECT_EQ(rowsUsed_, 101u);
}

TEST_F(RowPipes, PassOnWhyThereAreNoRows) {
    const auto never = [](std::uint32_t, std::uint8_t*) { return Status::Ok; };
    EXPECT_EQ(PipeRows(Status::FileNotFound, RowBytes, 1000, never), Status::FileNotFound);
    EXPECT_EQ(PipeRows(Status::FileNotFound, 1, 1, never), Status::FileNotFound);
}

TEST_F(RowPipes, UseRowsHereWhereNoProcessorIsToSpare) {
    ThreadShare all;
    while (all.TakeAnother()) {
    }
    EXPECT_EQ(Pipe(RowBytes, 200), Status::Ok);
    EXPECT_EQ(rowsUsed_, 200u);
    EXPECT_EQ(userThread_, std::this_thread::get_id());
}

} // namespace
