// The time that a test may take: a test that hangs becomes a failed one, and the rest goes on.
#include "tests/windows/deadline.h"

#include "tests/windows/desktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <thread>
#include <vector>

namespace tests {

namespace {

std::string NameOf(const testing::TestInfo& test) {
    std::string name = std::string(test.test_suite_name()) + "." + test.name();
    std::replace(name.begin(), name.end(), '/', '.'); // of a test with parameters
    return name;
}

// Sees all tests begin and end, and watches the one that runs from a thread of its own.
class Watchdog : public testing::EmptyTestEventListener {
  public:
    static Watchdog& Get() {
        static auto* watchdog = new Watchdog; // which googletest deletes
        return *watchdog;
    }

    void Limit(DWORD limitMs) { limit_ = std::chrono::milliseconds(limitMs); }
    bool IsOver() const { return isOver_; }

    void Enter(std::string what) {
        const std::lock_guard lock(mutex_);
        waits_.push_back(std::move(what));
    }

    void Leave() {
        const std::lock_guard lock(mutex_);
        waits_.pop_back();
    }

    void Add(HANDLE process) {
        const std::lock_guard lock(mutex_);
        processes_.push_back(process);
    }

    void Remove(HANDLE process) {
        const std::lock_guard lock(mutex_);
        std::erase(processes_, process);
    }

  private:
    void OnTestStart(const testing::TestInfo& test) override {
        isOver_ = false;
        isRunning_ = true;
        name_ = NameOf(test);
        hasFailed_ = false;
        watch_ = std::thread([this] { Watch(); });
    }

    // googletest can be asked for nothing here.
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed() && !hasFailed_.exchange(true)) {
            SaveScreenshotOfTest();
        }
    }

    void SaveScreenshotOfTest() const {
        std::filesystem::create_directories(LUMBRIX_LOGS);
        SaveScreenshot(std::string(LUMBRIX_LOGS) + "/" + name_ + ".bmp");
    }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        {
            const std::lock_guard lock(mutex_);
            isRunning_ = false;
        }
        ended_.notify_all();
        watch_.join();
    }

    bool EndsWithin(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex_);
        return ended_.wait_for(lock, time, [this] { return !isRunning_; });
    }

    void Watch() {
        if (EndsWithin(limit_)) {
            return;
        }
        Tell();
        isOver_ = true;
        EndProcesses();
        if (!EndsWithin(limit_ / 2)) {
            std::printf("%s does not come to its end; no test can be run after it\n", name_.c_str());
            std::fflush(stdout);
            TerminateProcess(GetCurrentProcess(), 1);
        }
    }

    void Tell() {
        std::string whatFor;
        {
            const std::lock_guard lock(mutex_);
            for (auto what = waits_.rbegin(); what != waits_.rend(); ++what) {
                whatFor += (whatFor.empty() ? " and waits for " : ", for ") + *what;
            }
        }
        ADD_FAILURE() << name_ << " has taken " << limit_.count() << " ms" << whatFor;
    }

    void EndProcesses() {
        const std::lock_guard lock(mutex_);
        for (const HANDLE process : processes_) {
            TerminateProcess(process, 1);
        }
    }

    std::mutex mutex_;
    std::condition_variable ended_;
    std::chrono::milliseconds limit_{TestLimitMs};
    std::atomic<bool> isOver_ = false;
    std::atomic<bool> hasFailed_ = false;
    bool isRunning_ = false;
    std::string name_;
    std::vector<std::string> waits_;
    std::vector<HANDLE> processes_;
    std::thread watch_;
};

[[maybe_unused]] const bool IsWatching = [] {
    testing::UnitTest::GetInstance()->listeners().Append(&Watchdog::Get());
    return true;
}();

} // namespace

void LimitTests(DWORD limitMs) { Watchdog::Get().Limit(limitMs); }

bool IsTestOver() { return Watchdog::Get().IsOver(); }

Waiting::Waiting(std::string what) { Watchdog::Get().Enter(std::move(what)); }

Waiting::~Waiting() { Watchdog::Get().Leave(); }

EndedWithTest::EndedWithTest(HANDLE process) : process_(process) { Watchdog::Get().Add(process_); }

EndedWithTest::~EndedWithTest() { Watchdog::Get().Remove(process_); }

} // namespace tests
