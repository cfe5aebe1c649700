// Files and folders through the 8-bit Windows calls.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/newfile_windows.h"
#include "platform/text.h"

#include <windows.h>

#include <array>
#include <memory>

namespace lumbrix {

namespace {

constexpr DWORD Invisible = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

[[noreturn]] void Raise(const char* action, const std::string& path) {
    const int number = static_cast<int>(GetLastError());
    throw RuntimeError(number, std::string(action) + " " + path + ": " + SystemReason(number));
}

struct CloseFile {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<HANDLE, CloseFile>;

File Open(const std::string& path, DWORD access, DWORD creation) {
    const HANDLE file = CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, creation,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (path.empty() || file == INVALID_HANDLE_VALUE) {
        Raise("cannot open", path);
    }
    return File(file);
}

// False where not all bytes could be written, with the system's error.
bool TryToWriteAll(const File& file, const std::string& bytes) {
    DWORD written = 0;
    if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
        return false;
    }
    SetLastError(ERROR_DISK_FULL); // for a disk may take a part without a word
    return written == bytes.size();
}

void WriteAll(const File& file, const std::string& path, const std::string& bytes) {
    if (!TryToWriteAll(file, bytes)) {
        Raise("cannot write", path);
    }
}

// A new, empty file in a folder.
std::string NewFileIn(const std::string& folder, const std::string& prefix) {
    char path[MAX_PATH] = {};
    if (GetTempFileNameA(folder.c_str(), prefix.c_str(), 0, path) == 0) {
        Raise("cannot make a temporary file in", folder);
    }
    return path;
}

// The folder of a file with its separator, or the current one.
std::string FolderOf(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/:");
    return separator == std::string::npos ? "." : path.substr(0, separator + 1);
}

// Ends a listing where nothing is left; raises where it failed.
void EndListing(const std::string& pattern) {
    if (GetLastError() != ERROR_FILE_NOT_FOUND && GetLastError() != ERROR_NO_MORE_FILES) {
        Raise("cannot list", pattern);
    }
}

struct CloseSearch {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

std::vector<std::string> Matches(const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    const HANDLE first = FindFirstFileA(pattern.c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) {
        EndListing(pattern);
        return names;
    }
    const std::unique_ptr<HANDLE, CloseSearch> search(first);
    do {
        if ((found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | Invisible)) == 0) {
            names.emplace_back(found.cFileName);
        }
    } while (FindNextFileA(search.get(), &found));
    EndListing(pattern);
    return names;
}

// False where it cannot be read or written, with the system's error. The source is closed again then: it may be the
// target.
bool CopyTo(const NewFile& copy, const std::string& path) {
    const File source = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::array<char, 1 << 16> block;
    DWORD count = 0;
    while (ReadFile(source.get(), block.data(), block.size(), &count, nullptr)) {
        if (count == 0) {
            return true;
        }
        if (!copy.Write(block.data(), count)) {
            return false;
        }
    }
    return false;
}

} // namespace

std::string SystemReason(int number) {
    char text[512] = "";
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, static_cast<DWORD>(number), 0, text, sizeof text, nullptr);
    const std::string reason(text, length);
    const std::size_t last = reason.find_last_not_of(" .\r\n");
    return last == std::string::npos ? "error " + std::to_string(number) : reason.substr(0, last + 1);
}

void RemoveFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & Invisible) != 0) {
        return;
    }
    if (!DeleteFileA(path.c_str())) {
        Raise("cannot delete", path);
    }
}

int TryToRemoveFile(const std::string& path) {
    return DeleteFileA(path.c_str()) ? 0 : static_cast<int>(GetLastError());
}

bool FileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & (FILE_ATTRIBUTE_DIRECTORY | Invisible)) == 0;
}

bool FolderExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::optional<std::uint64_t> FileSize(const std::string& path) {
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    FindClose(search);
    return (std::uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
}

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> names;
    trap([&] { names = Matches(folder + "\\*.*"); });
    return names;
}

void MakeFolders(const std::string& folder) {
    for (std::size_t end = folder.find('\\'); end != std::string::npos; end = folder.find('\\', end + 1)) {
        CreateDirectoryA(folder.substr(0, end).c_str(), nullptr);
    }
    CreateDirectoryA(folder.c_str(), nullptr);
    const DWORD attributes = GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        Raise("cannot make", folder);
    }
}

void RemoveFolder(const std::string& folder) {
    if (!RemoveDirectoryA(folder.c_str())) {
        Raise("cannot remove", folder);
    }
}

void WriteIntoFile(const std::string& path, const std::string& bytes) {
    WriteAll(Open(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS), path, bytes);
}

void WriteWholeFile(const std::string& path, const std::string& bytes) {
    WriteAll(Open(path, GENERIC_WRITE, CREATE_ALWAYS), path, bytes);
}

void AppendToFile(const std::string& path, const std::string& bytes) {
    const File file = Open(path, GENERIC_WRITE, OPEN_ALWAYS);
    const DWORD sizeBefore = SetFilePointer(file.get(), 0, nullptr, FILE_END);
    if (!TryToWriteAll(file, bytes)) {
        const DWORD error = GetLastError();
        SetFilePointer(file.get(), static_cast<LONG>(sizeBefore), nullptr, FILE_BEGIN);
        SetEndOfFile(file.get());
        SetLastError(error);
        Raise("cannot write", path);
    }
}

void DuplicateFile(const std::string& source, const std::string& target) {
    if (target.empty()) {
        throw RuntimeError(ERROR_INVALID_NAME, "cannot copy to a file without a name");
    }
    NewFile copy(ToWide(FolderOf(target))); // of a short name whatever the target's
    if (!copy || !CopyTo(copy, source) || !copy.PutInPlaceOf(ToWide(target))) {
        Raise("cannot copy to", target);
    }
}

std::string ReadFileContent(const std::string& path) {
    const File file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string bytes(GetFileSize(file.get(), nullptr), 0);
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        Raise("cannot read", path);
    }
    bytes.resize(read);
    return bytes;
}

std::string TemporaryFolderPath() {
    char buffer[260] = {};
    GetTempPathA(sizeof buffer, buffer);
    return buffer;
}

std::string NewTemporaryFile(const std::string& prefix) { return NewFileIn(TemporaryFolderPath(), prefix); }

std::string ProgramPath() {
    char buffer[256] = {};
    GetModuleFileNameA(nullptr, buffer, 255);
    return buffer;
}

std::string SystemFolder() {
    char buffer[600] = {};
    const UINT length = GetSystemDirectoryA(buffer, sizeof buffer);
    return {buffer, length < sizeof buffer ? length : 0};
}

std::string WindowsFolder() {
    char buffer[146] = {};
    const UINT length = GetWindowsDirectoryA(buffer, 145);
    return {buffer, length < sizeof buffer ? length : 0};
}

std::string FileSearch::FirstMatch(const std::string& pattern) {
    if (!pattern.empty()) {
        found_.clear();
        next_ = 0;
        found_ = Matches(pattern);
    }
    return next_ < found_.size() ? found_[next_++] : std::string();
}

} // namespace lumbrix
