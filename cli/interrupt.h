// The wish to stop, from Ctrl-C and the like.
#pragma once

namespace lumbrix::cli {

// The exit status of a program that was interrupted.
inline constexpr int InterruptedStatus = 130;

// From now on the first wish is noted for WasInterrupted, so that the file under way can be finished and nothing
// is left behind. A second one ends the program at once.
void CatchInterrupts();

bool WasInterrupted();

} // namespace lumbrix::cli
