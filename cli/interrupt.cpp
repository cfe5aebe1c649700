// The wish to stop, from Ctrl-C and the like.
#include "cli/interrupt.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <thread>

namespace lumbrix::cli {

namespace {

std::atomic<int> wishes{0};
std::atomic<int> wishesPassedOver{0}; // while the files under way are finished
static_assert(std::atomic<int>::is_always_lock_free, "they are changed where nothing may wait");

// Nothing is left behind by an end at once: what is being written has no name yet.
void Note(int signal) {
    std::signal(signal, Note); // Windows forgets the handler with each call
    if (++wishes > wishesPassedOver + 1) {
        std::_Exit(InterruptedStatus);
    }
}

// What is under way asks for MustStop while it goes from row to row. Where it does not come to that, as while a large
// bitmap is filled, the program ends all the same.
void WatchOverStopping() {
    constexpr std::chrono::milliseconds Glance(20);
    constexpr std::chrono::milliseconds Patience(500);
    while (!MustStop()) {
        std::this_thread::sleep_for(Glance);
    }
    std::this_thread::sleep_for(Patience);
    std::_Exit(InterruptedStatus);
}

// A signal that whoever started the program wants to be passed over stays so.
void Catch(int signal) {
    if (std::signal(signal, Note) == SIG_IGN) {
        std::signal(signal, SIG_IGN);
    }
}

} // namespace

void StopWhenInterrupted() {
    Catch(SIGINT);
    Catch(SIGTERM);
#ifdef SIGHUP
    Catch(SIGHUP);
#endif
    try {
        std::thread(WatchOverStopping).detach();
    } catch (const std::exception&) { // then a wish to stop waits for the next row
    }
}

void FinishWhenInterrupted() { wishesPassedOver = 1; }

bool WasInterrupted() { return wishes > 0; }

bool MustStop() { return wishes > wishesPassedOver; }

} // namespace lumbrix::cli
