// Calls functions of the imaging library by name.
#include "bench/library.h"

#include <dlfcn.h>

namespace bench {

namespace {

void* library = nullptr;

} // namespace

bool OpenLibrary(const char* path) {
    library = dlopen(path, RTLD_NOW);
    return library != nullptr;
}

void* FindFunction(const char* name) { return dlsym(library, name); }

} // namespace bench
