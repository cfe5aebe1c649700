// Keeps the library in memory while threads of its own run its code.
#pragma once

#include <memory>

namespace imaginglibrary {

struct LibraryRelease {
    void operator()(void* module) const;
};

// Until it ends the module that this code stands in is not unloaded, whatever the program asks for. Ends in code that
// the program itself has called, and so keeps loaded. Null in a program that cannot be unloaded anyway.
using LibraryHold = std::unique_ptr<void, LibraryRelease>;
LibraryHold HoldLibrary();

} // namespace imaginglibrary
