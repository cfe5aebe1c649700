// Shares independent pieces of work out over a few threads.
#include "imaginglibrary/operations/parallel.h"

#include "imaginglibrary/core/neverdestroyed.h"
#include "imaginglibrary/operations/libraryhold.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace imaginglibrary {

namespace {

// More threads cost more to wake than they save on a screen's worth of pixels.
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

// Threads that wait for work, made when they are first needed. Starting one takes some systems longer than drawing.
class WaitingThreads {
  public:
    // Has up to `count` threads do their share. False where somebody else has them at work.
    bool Help(SharedWork& work, std::size_t count) {
        if (!Begin(work, count)) {
            return false;
        }
        toDo_.notify_all();
        work.DoWhatIsLeft();
        std::unique_lock lock(mutex_);
        work_ = nullptr; // whoever did not wake up in time need not be waited for
        changed_.wait(lock, [&] { return busy_ == 0; });
        isTaken_ = false;
        changed_.notify_all();
        return true;
    }

    void End() {
        LibraryHold noLongerNeeded;
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return !isTaken_; });
        isTaken_ = true;
        isEnding_ = true;
        lock.unlock();
        toDo_.notify_all();
        for (std::thread& thread : threads_) {
            thread.join();
        }
        std::vector<std::thread>().swap(threads_);
        lock.lock();
        noLongerNeeded = std::move(hold_);
        isEnding_ = false;
        isTaken_ = false;
        changed_.notify_all();
    }

  private:
    bool Begin(SharedWork& work, std::size_t count) {
        const std::lock_guard lock(mutex_);
        if (isTaken_) {
            return false;
        }
        isTaken_ = true;
        try {
            if (hold_ == nullptr) {
                hold_ = HoldLibrary();
            }
            threads_.reserve(MostThreads);
            while (threads_.size() < count) {
                threads_.emplace_back([this] { Serve(); });
            }
        } catch (const std::exception&) {
            // No more of them, then.
        }
        work_ = &work;
        ++workNumber_;
        return true;
    }

    void Serve() {
        std::size_t lastNumber = 0;
        std::unique_lock lock(mutex_);
        while (true) {
            toDo_.wait(lock, [&] { return isEnding_ || (work_ != nullptr && workNumber_ != lastNumber); });
            if (isEnding_) {
                return;
            }
            lastNumber = workNumber_;
            ++busy_;
            SharedWork& work = *work_;
            lock.unlock();
            work.DoWhatIsLeft();
            lock.lock();
            --busy_;
            changed_.notify_all();
        }
    }

    std::mutex mutex_;
    std::condition_variable toDo_;
    std::condition_variable changed_;  // busy_ or isTaken_
    std::vector<std::thread> threads_; // belong to whoever has set isTaken_
    LibraryHold hold_;                 // as long as there are threads
    SharedWork* work_ = nullptr;
    std::size_t workNumber_ = 0;
    std::size_t busy_ = 0; // threads at work_
    bool isTaken_ = false;
    bool isEnding_ = false;
};

// Never destroyed: a process that ends may stop threads wherever they are.
WaitingThreads& TheWaitingThreads() {
    static NeverDestroyed<WaitingThreads> threads;
    return threads.Get();
}

} // namespace

void InParallel(std::size_t jobs, const std::function<void(std::size_t)>& work) {
    SharedWork shared(jobs, work);
    static const std::size_t processors = std::thread::hardware_concurrency(); // some systems read a file for it
    const std::size_t threads = std::min({jobs, MostThreads, processors});
    if (threads < 2 || !TheWaitingThreads().Help(shared, threads - 1)) {
        shared.DoWhatIsLeft();
    }
    shared.ThrowFailure();
}

void EndWaitingThreads() { TheWaitingThreads().End(); }

} // namespace imaginglibrary
