// Replacing files on Windows: a new file beside the target is moved into its place.
#include "platform/replacefile.h"

#include "platform/errors.h"
#include "platform/filefacts.h"
#include "platform/files.h"
#include "platform/newfile_windows.h"

namespace lumbrix {

void ReplaceWholeFile(const std::string& path, const std::string& bytes, TextEncoding encoding) {
    NewFile file(ToWide(FullFolderOf(path, encoding), encoding));
    if (!file || !file.Write(bytes.data(), bytes.size()) || !file.PutInPlaceOf(ToWide(path, encoding))) {
        const int error = static_cast<int>(GetLastError());
        throw RuntimeError(error, "cannot write " + path + ": " + SystemReason(error));
    }
}

void ReplaceWholeFile(const std::string& path, const std::string& bytes, Readers /*readers*/) {
    ReplaceWholeFile(path, bytes, TextEncoding::CodePage);
}

} // namespace lumbrix
