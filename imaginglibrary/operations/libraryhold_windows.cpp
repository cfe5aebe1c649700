// Keeps the library in memory, by a reference to its module.
#include "imaginglibrary/operations/libraryhold.h"

#include <windows.h>

namespace imaginglibrary {

void LibraryRelease::operator()(void* module) const { FreeLibrary(static_cast<HMODULE>(module)); }

LibraryHold HoldLibrary() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&HoldLibrary), &module);
    return LibraryHold(module);
}

} // namespace imaginglibrary
