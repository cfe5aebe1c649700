// Shares independent pieces of work out over a few threads.
#pragma once

#include <cstddef>
#include <functional>

namespace imaginglibrary {

// Calls `work` once for each number below `jobs`, on this thread and, where the machine has more processors, on a few
// others, and returns when all is done. The first exception that a piece of work throws is thrown here; jobs not begun
// by then are left out. Where no further thread is to be had this one does it all.
void InParallel(std::size_t jobs, const std::function<void(std::size_t)>& work);

} // namespace imaginglibrary
