// Within another process: calls of its functions, and its memory.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace tests {

// The process that a window belongs to. Some questions are answered only there.
class Inside {
  public:
    explicit Inside(HWND window);
    ~Inside();
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

    // Calls a function of a library that the process has loaded with up to four 32-bit arguments, one at the least, on
    // the thread of the window. One that cannot be called, or does not come back in time, is told as a failure and
    // gives 0.
    std::uint32_t Call(const char* library, const char* function, const std::vector<std::uint32_t>& arguments) const;

    // Bytes into memory of the process's own global heap, and back.
    std::uint32_t Put(const void* bytes, std::size_t count) const;
    void Get(std::uint32_t address, void* bytes, std::size_t count) const;

  private:
    HWND window_;
    HANDLE process_;
};

} // namespace tests
