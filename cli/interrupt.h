// The wish to stop, from Ctrl-C and the like.
#pragma once

namespace lumbrix::cli {

// The exit status of a program that was interrupted.
inline constexpr int InterruptedStatus = 130;

// From now on the wish to stop ends the program at once with that status, and no temporary file stays behind.
void EndWhenInterrupted();

// From now on the first wish is only noted for WasInterrupted, so that the files under way can be finished. A second
// one ends the program at once.
void FinishWhenInterrupted();

bool WasInterrupted();

} // namespace lumbrix::cli
