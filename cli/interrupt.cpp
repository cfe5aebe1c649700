// The wish to stop, from Ctrl-C and the like.
#include "cli/interrupt.h"

#include "cli/temporary.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

namespace lumbrix::cli {

namespace {

std::atomic<bool> finishesFirst{false};
std::atomic<bool> interrupted{false};
std::atomic<bool> ends{false};
static_assert(std::atomic<bool>::is_always_lock_free, "they are set where nothing may wait");

void Note(int signal) {
    std::signal(signal, Note); // Windows forgets the handler with each call
    if (!interrupted.exchange(true) && finishesFirst) {
        return;
    }
    if (!ends.exchange(true)) { // another thread may be at it
        RemoveLeftovers();
        std::_Exit(InterruptedStatus);
    }
}

// A signal that whoever started the program wants to be passed over stays so.
void Catch(int signal) {
    if (std::signal(signal, Note) == SIG_IGN) {
        std::signal(signal, SIG_IGN);
    }
}

} // namespace

void EndWhenInterrupted() {
    Catch(SIGINT);
    Catch(SIGTERM);
#ifdef SIGHUP
    Catch(SIGHUP);
#endif
}

void FinishWhenInterrupted() { finishesFirst = true; }

bool WasInterrupted() { return interrupted; }

} // namespace lumbrix::cli
