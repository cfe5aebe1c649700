// Modules as Windows knows them.
#include "platform/modulefiles.h"

#include <windows.h>

namespace lumbrix {

namespace {

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&LoadModuleFile), &module);
    return module;
}

} // namespace

ModuleHandle LoadModuleFile(const char* name) { return LoadLibraryA(name); }

void UnloadModule(ModuleHandle module) { FreeLibrary(static_cast<HMODULE>(module)); }

void* FindProcedure(ModuleHandle module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

std::string ModuleResource(int number) {
    const HMODULE module = OwnModule();
    const HRSRC resource = FindResourceA(module, MAKEINTRESOURCEA(number), MAKEINTRESOURCEA(10)); // raw data
    if (resource == nullptr) {
        return {};
    }
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    return {bytes, SizeofResource(module, resource)};
}

} // namespace lumbrix
