// What can be done with files wherever the program runs.
#include "platform/files.h"

#include "platform/errors.h"

namespace lumbrix {

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
