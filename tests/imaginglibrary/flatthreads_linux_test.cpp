// The threads that help with large drawings: they wait for the next one, and end with the last session.
#include "tests/support/flatdrawing.h"

#include <chrono>
#include <thread>

namespace {

using namespace tests;
using namespace tests::flat;

std::ptrdiff_t ThreadsOfThisProcess() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// The system counts a thread a moment longer than it runs.
bool SoonThereAre(std::ptrdiff_t threads) {
    for (int tries = 0; tries < 500 && ThreadsOfThisProcess() != threads; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ThreadsOfThisProcess() == threads;
}

class FlatThreads : public FlatTest {
  protected:
    void DrawMuch() {
        GpImage* const surface = NewBitmap(600, 600);
        GpImage* const image = ImageOf(*WhitePicture(10, 10));
        EXPECT_EQ(DrawImagePoints(NewGraphics(surface), image, {{0, 0}, {600, 50}, {-50, 600}}), Status::Ok);
    }
};

TEST_F(FlatThreads, WaitForTheNextDrawingAndEndWithTheLastSession) {
    const bool hasHelp = std::thread::hardware_concurrency() > 1;
    const std::ptrdiff_t before = ThreadsOfThisProcess();
    DrawMuch();
    const std::ptrdiff_t during = ThreadsOfThisProcess();
    EXPECT_EQ(during > before, hasHelp);
    DrawMuch();
    EXPECT_EQ(ThreadsOfThisProcess(), during);
    std::uintptr_t second = 0;
    const imaginglibrary::GdiplusStartupInput versionOne{1, nullptr, 0, 0};
    ASSERT_EQ(GdiplusStartup(&second, &versionOne, nullptr), Status::Ok);
    GdiplusShutdown(second);
    EXPECT_EQ(ThreadsOfThisProcess(), during);
    GdiplusShutdown(token_);
    EXPECT_TRUE(SoonThereAre(before));
    ASSERT_EQ(GdiplusStartup(&token_, &versionOne, nullptr), Status::Ok);
    DrawMuch();
    EXPECT_EQ(ThreadsOfThisProcess() > before, hasHelp);
}

} // namespace
