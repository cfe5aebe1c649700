// Keeps the library in memory, by opening it once more.
#include "imaginglibrary/operations/libraryhold.h"

#include <dlfcn.h>

namespace imaginglibrary {

void LibraryRelease::operator()(void* module) const { dlclose(module); }

LibraryHold HoldLibrary() {
    Dl_info info{};
    const bool isFound = dladdr(reinterpret_cast<const void*>(&HoldLibrary), &info) != 0;
    return LibraryHold(isFound ? dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD) : nullptr);
}

} // namespace imaginglibrary
