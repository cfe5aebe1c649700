// A recursive mutex that gives back what it took.
#pragma once

#include <mutex>

namespace imaginglibrary {

// The C++ library does not end a mutex whose beginning is a constant. With the threads of mingw-w64 such a one takes
// memory when it is first locked, which would be lost with every image.
class RecursiveMutex : public std::recursive_mutex {
  public:
    RecursiveMutex() = default;
    ~RecursiveMutex() {
#ifdef _WIN32
        pthread_mutex_destroy(native_handle());
#endif
    }
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;
};

} // namespace imaginglibrary
