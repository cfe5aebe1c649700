// Modules as shared objects.
#include "platform/modulefiles.h"

#include <dlfcn.h>

#include <string>

namespace lumbrix {

namespace {

constexpr const char* ImagingLibraryName = "gdiplus.dll";
constexpr const char* ImagingLibraryFile = "liblumbriximaging.so";

// The folder, with its slash, of the shared object or program that this code was linked into.
std::string OwnFolder() {
    Dl_info place{};
    if (dladdr(reinterpret_cast<void*>(&LoadModuleFile), &place) == 0 || place.dli_fname == nullptr) {
        return {};
    }
    const std::string file = place.dli_fname;
    return file.substr(0, file.rfind('/') + 1);
}

} // namespace

ModuleHandle LoadModuleFile(const char* name) {
    if (std::string(name) != ImagingLibraryName) {
        return dlopen(name, RTLD_NOW | RTLD_LOCAL);
    }
    // As built, and as installed: folders of libraries are for those that programs link.
    for (const char* folder : {"", "lumbrix/"}) {
        const std::string file = OwnFolder() + folder + ImagingLibraryFile;
        if (void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            return module;
        }
    }
    return dlopen(ImagingLibraryFile, RTLD_NOW | RTLD_LOCAL);
}

void UnloadModule(ModuleHandle module) { dlclose(module); }

void* FindProcedure(ModuleHandle module, const char* name) { return dlsym(module, name); }

std::string ModuleResource(int /*number*/) { return {}; }

} // namespace lumbrix
