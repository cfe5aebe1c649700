// Shares the machine's processors out among those who would like a thread beside their own.
#pragma once

#include <mutex>

namespace imaginglibrary {

class ThreadBudget {
  public:
    explicit ThreadBudget(unsigned processors) : processors_(processors) {}

    // The one of this machine.
    static ThreadBudget& OfTheMachine();

  private:
    friend class ThreadShare;

    const unsigned processors_;
    std::mutex mutex_;
    unsigned atWork_ = 0; // callers and what they have taken
};

// A thread at work, and those that it takes. A thread that holds several counts once: with as many callers as there are
// processors each works alone. Belongs to the thread that made it.
class ThreadShare {
  public:
    explicit ThreadShare(ThreadBudget& budget = ThreadBudget::OfTheMachine());
    ~ThreadShare();
    ThreadShare(const ThreadShare&) = delete;
    ThreadShare& operator=(const ThreadShare&) = delete;

    // Whether a processor is left for one more thread, which is then taken until this share ends.
    bool TakeAnother();

  private:
    ThreadBudget& budget_;
    bool isFirst_; // of its thread
    unsigned counted_ = 0;
};

} // namespace imaginglibrary
