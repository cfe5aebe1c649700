// Writes one of our own files again and again until it is killed: keepwriting settings|list|copy FOLDER
// What the next start makes of it: keepwriting read-settings|sweep-list FOLDER
#include "platform/cleanup.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "tests/support/environment.h"

#include <cstdio>
#include <string>

namespace {

using namespace lumbrix;

// Of nobody else: on Windows the settings are those of whoever runs this.
constexpr const char* Key = "SOFTWARE\\LumbrixKeepWriting";
constexpr const char* Name = "Delete";

// A setting is larger than a page of the system, but where no more than 256 bytes can be read.
std::size_t LengthOf(const std::string& kind) {
    if (kind == "list") {
        return 100;
    }
#ifdef _WIN32
    return 200;
#else
    return 3000;
#endif
}

[[noreturn]] void KeepWriting(const std::string& kind, const std::string& folder) {
    for (int number = 0;; ++number) {
        const std::string text = std::to_string(number % 10) + std::string(LengthOf(kind), 'x') + "/end";
        if (kind == "settings") {
            SetRegValue(CurrentUserRoot, Key, Name, text);
        } else if (kind == "list") {
            AppendToCleanUpList(text, folder);
        } else {
            DuplicateFile(folder + (number % 2 == 0 ? "one" : "two"), folder + "copy");
        }
    }
}

} // namespace

int main(int count, char** words) {
    if (count != 3) {
        return 2;
    }
    const std::string kind = words[1];
    const std::string folder = std::string(words[2]) + PathSeparator;
    const tests::EnvironmentVariable settingsFolder("XDG_CONFIG_HOME", words[2]);
    if (kind == "read-settings") {
        std::fputs(GetRegValue(CurrentUserRoot, Key, Name).c_str(), stdout);
        DeleteRegKey(CurrentUserRoot, Key);
    } else if (kind == "sweep-list") {
        SweepCleanUpList(folder);
    } else {
        KeepWriting(kind, folder);
    }
}
