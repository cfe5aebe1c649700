// Shares independent pieces of work out over a few threads.
#pragma once

#include <cstddef>
#include <functional>

namespace imaginglibrary {

// Calls `work` once for each number below `jobs`, on this thread and, where the machine has more processors, on a few
// others, and returns when all is done. The first exception that a piece of work throws is thrown here; jobs not begun
// by then are left out. Where no further thread is to be had, or where the others help somebody else, this one does it
// all; so work may share out its own.
void InParallel(std::size_t jobs, const std::function<void(std::size_t)>& work);

// The other threads wait for more, and keep the library in memory meanwhile. This ends them, once nobody has them at
// work; the next one who needs them starts them anew. Not for work itself to call.
void EndWaitingThreads();

} // namespace imaginglibrary
