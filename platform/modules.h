// Modules loaded and searched by name at run time, and what a module carries inside.
#pragma once

#include <string>

namespace lumbrix {

// Zero means none.
using ModuleHandle = void*;

// Loads a module by its bare name, in the system's search order. Zero where it cannot be loaded. On Linux the name
// "gdiplus.dll" is met by our own imaging library, looked for beside the file that this code lies in.
ModuleHandle LoadModule(const char* name);

void UnloadModule(ModuleHandle module);

// The address of an exported name, or null.
void* FindProcedure(ModuleHandle module, const char* name);

// From now on LoadModule loads `file` when asked for `name`; an empty file ends that. A seam for tests.
void SubstituteModule(const std::string& name, const std::string& file);

// The bytes of a numbered resource of the module that this code lies in; empty where there is none, and on Linux,
// where modules carry no resources.
std::string ModuleResource(int number);

} // namespace lumbrix
