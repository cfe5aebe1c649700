// The wish to stop, from Ctrl-C and the like.
#pragma once

namespace lumbrix::cli {

// The exit status of a program that was interrupted.
inline constexpr int InterruptedStatus = 130;

// From now on the first wish to stop makes MustStop true, and should the program not have ended half a second later, it
// is ended. One more wish ends it at once. Nothing is left behind: what is being written has no name yet.
void StopWhenInterrupted();

// From now on the first wish is only noted for WasInterrupted, so that the files under way can be finished, and the
// second and third are what the first and second were.
void FinishWhenInterrupted();

bool WasInterrupted();

// Whether what is under way must not be finished.
bool MustStop();

} // namespace lumbrix::cli
