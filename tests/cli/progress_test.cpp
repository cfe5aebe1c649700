// When the bar is drawn; the clock is the test's own.
#include "cli/progress.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

// What the bar writes on the error output while a clock goes on as the test says.
class ProgressTest : public testing::Test {
  protected:
    ProgressClock Clock() {
        return [this] { return now_; };
    }

    void Wait(int milliseconds) { now_ += std::chrono::milliseconds(milliseconds); }

    template <class Function> std::string ErrorsOf(const Function& function) {
        testing::internal::CaptureStderr();
        function();
        return testing::internal::GetCapturedStderr();
    }

    std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
};

TEST_F(ProgressTest, NothingIsDrawnWithinASecond) {
    EXPECT_EQ(ErrorsOf([&] {
                  Progress progress(2, true, Clock());
                  Wait(999);
                  progress.Step();
                  progress.Rows(1, 2);
              }),
              "");
}

TEST_F(ProgressTest, BarIsDrawnAfterASecondAndErased) {
    const std::string line = "[####################--------------------] 1 of 2";
    EXPECT_EQ(ErrorsOf([&] {
                  Progress progress(2, true, Clock());
                  Wait(1000);
                  progress.Step();
              }),
              "\r" + line + "\r" + std::string(line.size(), ' ') + "\r");
}

TEST_F(ProgressTest, SingleFileShowsThePartOfItsRows) {
    const std::string shown = ErrorsOf([&] {
        Progress progress(1, true, Clock());
        Wait(1000);
        progress.Rows(1, 3);
    });
    EXPECT_NE(shown.find("\r[#############---------------------------] 33 %\r"), std::string::npos) << shown;
}

TEST_F(ProgressTest, RowsOfManyFilesShowTheFilesThatAreDone) {
    const std::string shown = ErrorsOf([&] {
        Progress progress(4, true, Clock());
        Wait(1000);
        progress.Rows(1, 3);
    });
    EXPECT_NE(shown.find("] 0 of 4\r"), std::string::npos) << shown;
}

TEST_F(ProgressTest, BarIsDrawnTenTimesASecond) {
    const std::string shown = ErrorsOf([&] {
        Progress progress(100, true, Clock());
        Wait(1000);
        progress.Step();
        Wait(99);
        progress.Step();
        Wait(1);
        progress.Step();
    });
    EXPECT_NE(shown.find("] 1 of 100\r"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("] 2 of 100\r"), std::string::npos) << shown;
    EXPECT_NE(shown.find("] 3 of 100\r"), std::string::npos) << shown;
}

TEST_F(ProgressTest, LineStandsAboveTheBar) {
    const std::string line = "[--------------------] 0 of 2";
    const std::string shown = ErrorsOf([&] {
        Progress progress(2, true, Clock());
        Wait(1000);
        progress.Rows(0, 1);
        progress.Tell("hear\n");
    });
    const std::size_t told = shown.find(" \rhear\n\r[");
    ASSERT_NE(told, std::string::npos) << shown;
    EXPECT_EQ(shown.substr(shown.size() - 2), " \r");
}

TEST_F(ProgressTest, LineAloneIsToldWithoutABar) {
    EXPECT_EQ(ErrorsOf([&] { Progress(2, true, Clock()).Tell("hear\n"); }), "hear\n");
}

TEST_F(ProgressTest, ShorterLineCoversALongerOne) {
    const std::string shown = ErrorsOf([&] {
        Progress progress(1, true, Clock());
        Wait(1000);
        progress.Rows(10, 10);
        Wait(100);
        progress.Rows(1, 100);
    });
    EXPECT_NE(shown.find("] 100 %\r["), std::string::npos) << shown;
    EXPECT_NE(shown.find("] 1 %  \r"), std::string::npos) << shown;
}

TEST_F(ProgressTest, NothingIsDrawnWhereItIsNotShown) {
    EXPECT_EQ(ErrorsOf([&] {
                  Progress progress(2, false, Clock());
                  Wait(5000);
                  progress.Step();
                  progress.Rows(1, 2);
              }),
              "");
}

TEST_F(ProgressTest, RowsNeedNotAddUp) {
    const std::string shown = ErrorsOf([&] {
        Progress progress(1, true, Clock());
        Wait(1000);
        progress.Rows(5, 4);
        Wait(100);
        progress.Rows(0, 0);
        Wait(100);
        progress.Rows(4294967295u, 4294967295u);
    });
    EXPECT_NE(shown.find("] 100 %\r"), std::string::npos) << shown;
    EXPECT_NE(shown.find("] 0 %"), std::string::npos) << shown;
}

} // namespace
