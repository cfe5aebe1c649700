// Replacing files on Windows: a new file beside the target is moved into its place.
#include "platform/replacefile.h"

#include "platform/errors.h"
#include "platform/filefacts.h"
#include "platform/files.h"

#include <windows.h>

namespace lumbrix {

namespace {

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

bool Write(const wchar_t* path, const std::string& bytes) {
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    DWORD written = 0;
    SetLastError(ERROR_DISK_FULL); // for a disk may take a part without a word
    const bool isWritten = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
                           written == bytes.size() && FlushFileBuffers(file) != 0;
    const DWORD error = GetLastError();
    CloseHandle(file);
    SetLastError(error);
    return isWritten;
}

} // namespace

void ReplaceWholeFile(const std::string& path, const std::string& bytes, TextEncoding encoding) {
    const std::u16string folder = ToWide(FullFolderOf(path, encoding), encoding);
    wchar_t beside[MAX_PATH] = L"";
    bool isDone = GetTempFileNameW(Wide(folder), L"IMG", 0, beside) != 0;
    if (isDone) {
        isDone = Write(beside, bytes) && MoveFileExW(beside, Wide(ToWide(path, encoding)), MOVEFILE_REPLACE_EXISTING);
    }
    if (!isDone) {
        const DWORD error = GetLastError();
        if (beside[0] != 0) {
            DeleteFileW(beside);
        }
        throw RuntimeError(static_cast<int>(error),
                           "cannot write " + path + ": " + SystemReason(static_cast<int>(error)));
    }
}

void ReplaceWholeFile(const std::string& path, const std::string& bytes, Readers /*readers*/) {
    ReplaceWholeFile(path, bytes, TextEncoding::CodePage);
}

} // namespace lumbrix
