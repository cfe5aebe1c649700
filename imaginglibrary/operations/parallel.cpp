// Shares independent pieces of work out over a few threads.
#include "imaginglibrary/operations/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace imaginglibrary {

namespace {

// More threads cost more to start than they save on a screen's worth of pixels.
constexpr std::size_t MostThreads = 4;

class SharedWork {
  public:
    SharedWork(std::size_t jobs, const std::function<void(std::size_t)>& work) : jobs_(jobs), work_(work) {}

    void DoWhatIsLeft() noexcept {
        try {
            for (std::size_t job = next_++; job < jobs_; job = next_++) {
                work_(job);
            }
        } catch (...) {
            next_ = jobs_;
            const std::lock_guard lock(mutex_);
            if (failure_ == nullptr) {
                failure_ = std::current_exception();
            }
        }
    }

    void ThrowFailure() const {
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
    }

  private:
    std::size_t jobs_;
    const std::function<void(std::size_t)>& work_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::exception_ptr failure_;
};

} // namespace

void InParallel(std::size_t jobs, const std::function<void(std::size_t)>& work) {
    SharedWork shared(jobs, work);
    static const std::size_t processors = std::thread::hardware_concurrency(); // some systems read a file for it
    const std::size_t threads = std::min({jobs, MostThreads, processors});
    std::vector<std::thread> others;
    others.reserve(MostThreads);
    try {
        while (others.size() + 1 < threads) {
            others.emplace_back([&] { shared.DoWhatIsLeft(); });
        }
    } catch (const std::system_error&) {
        // No more of them, then.
    }
    shared.DoWhatIsLeft();
    for (std::thread& other : others) {
        other.join();
    }
    shared.ThrowFailure();
}

} // namespace imaginglibrary
