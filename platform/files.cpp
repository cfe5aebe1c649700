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

void ReplaceWholeFile(const std::string& path, const std::string& bytes) {
    const std::string written = NewTemporaryFile("NEW");
    const auto error = trap([&] {
        WriteWholeFile(written, bytes);
        DuplicateFile(written, path);
    });
    TryToRemoveFile(written);
    if (error) {
        throw RuntimeError(error->Number(), "cannot write " + path + ": " + SystemReason(error->Number()));
    }
}

} // namespace lumbrix
