// What can be done with files wherever the program runs.
#include "platform/files.h"

#include "platform/errors.h"

namespace lumbrix {

std::string ReadSmallFile(const std::string& path) {
    constexpr std::uint64_t LongestFile = 1 << 20;
    std::string content;
    if (FileExists(path) && FileSize(path).value_or(0) <= LongestFile) {
        trap([&] { content = ReadFileContent(path); });
    }
    return content;
}

} // namespace lumbrix
