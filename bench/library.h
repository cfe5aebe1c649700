// Calls functions of the imaging library by name.
#pragma once

#include <cstdio>
#include <cstdlib>

#if defined(_WIN32)
#define BENCH_CALL __stdcall // how the platform's own functions are called
#else
#define BENCH_CALL
#endif

namespace bench {

// False where it cannot be loaded.
bool OpenLibrary(const char* path);

// Null for a function that the library lacks.
void* FindFunction(const char* name);

// Gives back the function's status.
template <class... Arguments> int Call(const char* name, Arguments... arguments) {
    void* const function = FindFunction(name);
    if (function == nullptr) {
        std::fprintf(stderr, "bench: no %s\n", name);
        std::exit(1);
    }
    return reinterpret_cast<int(BENCH_CALL*)(Arguments...)>(function)(arguments...);
}

} // namespace bench
