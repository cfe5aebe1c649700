// What can be found out about files on Windows.
#include "platform/filefacts.h"

#include <windows.h>

#include <memory>

namespace lumbrix {

namespace {

struct CloseIt {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using OpenedFile = std::unique_ptr<HANDLE, CloseIt>;

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Null where it cannot be opened.
OpenedFile OpenExisting(const std::string& path, DWORD access, DWORD sharing) {
    const HANDLE file = CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                    nullptr); // which lets folders be opened too
    return OpenedFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

} // namespace

FileKind KindOfFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        const bool isNameBad =
            error == ERROR_INVALID_NAME || error == ERROR_FILENAME_EXCED_RANGE || error == ERROR_BAD_PATHNAME;
        return isNameBad ? FileKind::Impossible : FileKind::Missing;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return FileKind::Folder;
    }
    return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? FileKind::Other : FileKind::Regular;
}

bool CanReadFile(const std::string& path) { return OpenExisting(path, GENERIC_READ, FILE_SHARE_READ) != nullptr; }

bool CanWriteFile(const std::string& path) {
    return OpenExisting(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ) != nullptr;
}

bool CanMakeFileIn(const std::string& folder) {
    char path[MAX_PATH] = "";
    if (GetTempFileNameA(folder.c_str(), "IMG", 0, path) == 0) {
        return false;
    }
    DeleteFileA(path);
    return true;
}

bool IsSameFile(const std::string& one, const std::string& other) {
    const OpenedFile first = OpenExisting(one, 0, ShareAll);
    const OpenedFile second = OpenExisting(other, 0, ShareAll);
    BY_HANDLE_FILE_INFORMATION a{};
    BY_HANDLE_FILE_INFORMATION b{};
    return first && second && GetFileInformationByHandle(first.get(), &a) &&
           GetFileInformationByHandle(second.get(), &b) && a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

std::string FullFolderOf(const std::string& path) {
    char full[MAX_PATH] = "";
    const DWORD length = GetFullPathNameA(path.c_str(), sizeof full, full, nullptr);
    const std::string name = length < sizeof full ? std::string(full, length) : path;
    const std::size_t separator = name.find_last_of("\\/");
    return separator == std::string::npos ? std::string(".") : name.substr(0, separator);
}

} // namespace lumbrix
