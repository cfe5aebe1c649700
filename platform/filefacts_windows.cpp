// What can be found out about files on Windows.
#include "platform/filefacts.h"
#include "platform/newfile_windows.h"

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

class WideName {
  public:
    WideName(const std::string& name, TextEncoding encoding) : wide_(ToWide(name, encoding)) {}
    const wchar_t* Get() const { return reinterpret_cast<const wchar_t*>(wide_.c_str()); }

  private:
    std::u16string wide_;
};

// Null where it cannot be opened.
OpenedFile OpenExisting(const WideName& name, DWORD access, DWORD sharing) {
    const HANDLE file = CreateFileW(name.Get(), access, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                    nullptr); // which lets folders be opened too
    return OpenedFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

} // namespace

FileKind KindOfFile(const std::string& path, TextEncoding encoding) {
    const DWORD attributes = GetFileAttributesW(WideName(path, encoding).Get());
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

bool CanReadFile(const std::string& path, TextEncoding encoding) {
    return OpenExisting({path, encoding}, GENERIC_READ, FILE_SHARE_READ) != nullptr;
}

bool CanWriteFile(const std::string& path, TextEncoding encoding) {
    return OpenExisting({path, encoding}, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ) != nullptr;
}

bool AreTooManyFilesOpen() { return false; } // it has room for millions

bool CanMakeFileIn(const std::string& folder, TextEncoding encoding) {
    return static_cast<bool>(NewFile(ToWide(folder, encoding)));
}

bool IsSameFile(const std::string& one, const std::string& other, TextEncoding encoding) {
    const OpenedFile first = OpenExisting({one, encoding}, 0, ShareAll);
    const OpenedFile second = OpenExisting({other, encoding}, 0, ShareAll);
    BY_HANDLE_FILE_INFORMATION a{};
    BY_HANDLE_FILE_INFORMATION b{};
    return first && second && GetFileInformationByHandle(first.get(), &a) &&
           GetFileInformationByHandle(second.get(), &b) && a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

std::string FullFolderOf(const std::string& path, TextEncoding encoding) {
    wchar_t full[MAX_PATH] = L"";
    const DWORD length = GetFullPathNameW(WideName(path, encoding).Get(), MAX_PATH, full, nullptr);
    const std::string name =
        length < MAX_PATH ? ToNarrow({reinterpret_cast<const char16_t*>(full), length}, encoding) : path;
    const std::size_t separator = name.find_last_of("\\/");
    return separator == std::string::npos ? std::string(".") : name.substr(0, separator);
}

} // namespace lumbrix
