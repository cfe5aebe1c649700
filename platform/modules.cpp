// Which file stands for a module's name.
#include "platform/modules.h"
#include "platform/modulefiles.h"

#include <map>

namespace lumbrix {

namespace {

std::map<std::string, std::string>& Substitutes() {
    static std::map<std::string, std::string> substitutes;
    return substitutes;
}

} // namespace

void SubstituteModule(const std::string& name, const std::string& file) {
    if (file.empty()) {
        Substitutes().erase(name);
    } else {
        Substitutes()[name] = file;
    }
}

ModuleHandle LoadModule(const char* name) {
    const auto substitute = Substitutes().find(name);
    return LoadModuleFile(substitute == Substitutes().end() ? name : substitute->second.c_str());
}

} // namespace lumbrix
