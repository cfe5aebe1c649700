// How our own saves know on Linux that a picture is being read: readers hold an advisory lock, and savers ask for it.
#pragma once

#include <string>

namespace imaginglibrary {

// Holds the file as a reader for as long as the descriptor is open. False where another program has it for itself; file
// systems without locks are no reason to refuse a picture.
bool LockForReading(int descriptor);

// Whether anybody holds the file. Asks without taking the lock, so that no reader or other saver meets one. True too
// where that cannot be found out, but for a file that may not be read.
bool IsLocked(const std::string& path);

} // namespace imaginglibrary
