// Writes one of our own files again and again until it is killed: keepwriting settings|list|copy FOLDER
#include "platform/cleanup.h"
#include "platform/files.h"
#include "platform/registry.h"

#include <cstdlib>
#include <string>

int main(int count, char** words) {
    using namespace lumbrix;
    if (count != 3) {
        return 2;
    }
    const std::string kind = words[1];
    const std::string folder = std::string(words[2]) + PathSeparator;
    setenv("XDG_CONFIG_HOME", words[2], 1);
    for (int number = 0;; ++number) {
        const std::string text = std::to_string(number % 10) + std::string(kind == "list" ? 100 : 3000, 'x') + "/end";
        if (kind == "settings") {
            SetRegValue(CurrentUserRoot, "SOFTWARE\\Lumbrix", "Delete", text);
        } else if (kind == "list") {
            AppendToCleanUpList(text, folder);
        } else {
            DuplicateFile(folder + (number % 2 == 0 ? "one" : "two"), folder + "copy");
        }
    }
}
