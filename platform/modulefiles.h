// Loading a module file, the part that differs between systems.
#pragma once

#include "platform/modules.h"

namespace lumbrix {

// As LoadModule, without substitutes.
ModuleHandle LoadModuleFile(const char* name);

} // namespace lumbrix
