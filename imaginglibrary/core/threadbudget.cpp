// Shares the machine's processors out among those who would like a thread beside their own.
#include "imaginglibrary/core/threadbudget.h"

#include <thread>

namespace imaginglibrary {

namespace {

thread_local bool isCounted = false;

} // namespace

ThreadBudget& ThreadBudget::OfTheMachine() {
    static ThreadBudget budget(std::thread::hardware_concurrency());
    return budget;
}

ThreadShare::ThreadShare(ThreadBudget& budget) : budget_(budget), isFirst_(!isCounted) {
    if (isFirst_) {
        isCounted = true;
        const std::lock_guard lock(budget_.mutex_);
        ++budget_.atWork_;
        ++counted_;
    }
}

ThreadShare::~ThreadShare() {
    const std::lock_guard lock(budget_.mutex_);
    budget_.atWork_ -= counted_;
    if (isFirst_) {
        isCounted = false;
    }
}

bool ThreadShare::TakeAnother() {
    const std::lock_guard lock(budget_.mutex_);
    if (budget_.atWork_ >= budget_.processors_) {
        return false;
    }
    ++budget_.atWork_;
    ++counted_;
    return true;
}

} // namespace imaginglibrary
