// Replacing files on Linux, where names have one encoding.
#include "platform/replacefile.h"

#include "platform/files.h"

namespace lumbrix {

void ReplaceWholeFile(const std::string& path, const std::string& bytes, TextEncoding /*encoding*/) {
    ReplaceWholeFile(path, bytes);
}

} // namespace lumbrix
