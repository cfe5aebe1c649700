// Rows on their way from a reader to where they are wanted.
#include "imaginglibrary/core/rowpump.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;

// Rows of one byte that count up from 10, until one fails.
class CountingRows : public RowReader {
  public:
    explicit CountingRows(std::uint32_t failing) : failing_(failing) {}

    Status ReadRow(std::uint8_t* row) override {
        *row = static_cast<std::uint8_t>(10 + next_);
        return next_++ == failing_ ? Status::AccessDenied : Status::Ok;
    }

  private:
    std::uint32_t failing_;
    std::uint32_t next_ = 0;
};

Result<std::unique_ptr<RowReader>> Counting(std::uint32_t failing = 99) {
    return std::unique_ptr<RowReader>(std::make_unique<CountingRows>(failing));
}

TEST(RowPump, EveryRowIsReadIntoItsPlaceAndThenUsed) {
    std::vector<std::uint8_t> memory(3);
    std::vector<int> used;
    const Status status = PumpRows(
        Counting(), 3, [&](std::uint32_t y) { return &memory[2 - y]; },
        [&](std::uint32_t y, const std::uint8_t* row) {
            used.push_back(static_cast<int>(y) * 100 + *row);
            return Status::Ok;
        });
    EXPECT_EQ(status, Status::Ok);
    EXPECT_EQ(memory, (std::vector<std::uint8_t>{12, 11, 10}));
    EXPECT_EQ(used, (std::vector<int>{10, 111, 212}));
}

TEST(RowPump, FirstFailureEndsIt) {
    int used = 0;
    const auto count = [&](std::uint32_t y, const std::uint8_t*) {
        ++used;
        return y == 1 ? Status::Win32Error : Status::Ok;
    };
    EXPECT_EQ(ForEachRow(Status::ObjectBusy, 1, 5, count), Status::ObjectBusy);
    EXPECT_EQ(used, 0);
    EXPECT_EQ(ForEachRow(Counting(1), 1, 5, count), Status::AccessDenied);
    EXPECT_EQ(used, 1);
    EXPECT_EQ(ForEachRow(Counting(), 1, 5, count), Status::Win32Error);
    EXPECT_EQ(used, 3);
}

} // namespace
