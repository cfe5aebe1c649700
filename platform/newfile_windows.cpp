// A file that appears whole or not at all.
#include "platform/newfile_windows.h"

#include <utility>

namespace lumbrix {

namespace {

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

bool SetDeleteOnClose(HANDLE file, bool doDelete) {
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = doDelete;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) != 0;
}

} // namespace

NewFile::NewFile(const std::u16string& folder) {
    constexpr UINT Attempts = 1000;
    const UINT first = GetTickCount();
    for (UINT attempt = 0; attempt < Attempts; ++attempt) {
        // With 0 for a number the system would make the file itself, and a kill would leave it.
        const UINT number = (first + attempt) % 0xFFFF + 1;
        if (GetTempFileNameW(Wide(folder), L"IMG", number, name_) == 0) {
            return;
        }
        file_ = CreateFileW(name_, GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file_ != INVALID_HANDLE_VALUE) {
            SetDeleteOnClose(file_, true);
            return;
        }
        if (GetLastError() != ERROR_FILE_EXISTS) {
            return;
        }
    }
}

NewFile::~NewFile() {
    if (file_ != INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        SetDeleteOnClose(file_, true);
        CloseHandle(file_);
        SetLastError(error);
    }
}

bool NewFile::Write(const void* bytes, std::size_t count) const {
    const auto* from = static_cast<const char*>(bytes);
    while (count > 0) {
        DWORD step = 0;
        SetLastError(ERROR_DISK_FULL); // for a disk may take nothing without a word
        if (!WriteFile(file_, from, static_cast<DWORD>(count), &step, nullptr) || step == 0) {
            return false;
        }
        from += step;
        count -= step;
    }
    return true;
}

bool NewFile::KeepAndClose() {
    return SetDeleteOnClose(file_, false) && CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE));
}

bool NewFile::PutInPlaceOf(const std::u16string& target) {
    if (!FlushFileBuffers(file_)) {
        return false;
    }
    if (KeepAndClose() && MoveFileExW(name_, Wide(target), MOVEFILE_REPLACE_EXISTING)) {
        return true;
    }
    if (file_ == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        DeleteFileW(name_);
        SetLastError(error);
    }
    return false;
}

} // namespace lumbrix
