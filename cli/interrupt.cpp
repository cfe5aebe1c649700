// The wish to stop, from Ctrl-C and the like.
#include "cli/interrupt.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

namespace lumbrix::cli {

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "it is set where nothing may wait");

void Note(int signal) {
    if (interrupted.exchange(true)) {
        std::_Exit(InterruptedStatus);
    }
    std::signal(signal, Note); // Windows forgets the handler with each call
}

// A signal that whoever started the program wants to be passed over stays so.
void Catch(int signal) {
    if (std::signal(signal, Note) == SIG_IGN) {
        std::signal(signal, SIG_IGN);
    }
}

} // namespace

void CatchInterrupts() {
    Catch(SIGINT);
    Catch(SIGTERM);
}

bool WasInterrupted() { return interrupted; }

} // namespace lumbrix::cli
