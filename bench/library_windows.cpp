// Calls functions of the imaging library by name.
#include "bench/library.h"

#include <windows.h>

namespace bench {

namespace {

HMODULE library = nullptr;

} // namespace

bool OpenLibrary(const char* path) {
    library = LoadLibraryA(path);
    return library != nullptr;
}

void* FindFunction(const char* name) { return reinterpret_cast<void*>(GetProcAddress(library, name)); }

} // namespace bench
