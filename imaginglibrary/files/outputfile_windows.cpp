// Writing on Windows: a file beside the target that deletes itself unless it is moved into place at the end.
#include "imaginglibrary/files/outputfile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace imaginglibrary {

namespace {

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

// Whether the file may be written, renamed and deleted at this moment; an image that was loaded from it forbids that.
bool CanReplace(const std::u16string& path) {
    const HANDLE file =
        CreateFileW(Wide(path), GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool isDiskFile = GetFileType(file) == FILE_TYPE_DISK;
    CloseHandle(file);
    return isDiskFile;
}

// Short, for the target's own path may be as long as paths can be.
std::u16string ScratchNameBeside(const std::u16string& target, DWORD number) {
    const std::string digits = std::to_string(number);
    const std::size_t separator = target.find_last_of(u"\\/:");
    const std::size_t folderLength = separator == std::u16string::npos ? 0 : separator + 1;
    return target.substr(0, folderLength) + std::u16string(digits.begin(), digits.end()) + u".tmp";
}

bool SetDeleteOnClose(HANDLE file, bool doDelete) {
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = doDelete;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) != 0;
}

class WindowsOutputFile : public OutputFile {
  public:
    WindowsOutputFile(std::u16string target, bool replaces, CommitGate gate)
        : target_(std::move(target)), replaces_(replaces), gate_(std::move(gate)) {}

    ~WindowsOutputFile() override {
        if (file_ != INVALID_HANDLE_VALUE) {
            SetDeleteOnClose(file_, true);
            CloseHandle(file_);
        }
    }

    Status Open() {
        constexpr int Attempts = 100;
        for (int attempt = 0; attempt < Attempts && file_ == INVALID_HANDLE_VALUE; ++attempt) {
            scratchName_ = ScratchNameBeside(target_, GetTickCount() + static_cast<DWORD>(attempt) * 7919u);
            file_ = CreateFileW(Wide(scratchName_), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
            if (file_ == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) {
                return Status::GenericError;
            }
        }
        if (file_ == INVALID_HANDLE_VALUE) {
            return Status::GenericError;
        }
        // Should the process be killed, the system deletes the file.
        SetDeleteOnClose(file_, true);
        return Status::Ok;
    }

  protected:
    Status DoWriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
        constexpr std::size_t LargestWrite = 1u << 20;
        const auto* from = static_cast<const char*>(bytes);
        while (count > 0) {
            OVERLAPPED position = PositionOf(offset);
            DWORD step = 0;
            if (!WriteFile(file_, from, static_cast<DWORD>(std::min(count, LargestWrite)), &step, &position) ||
                step == 0) {
                return Status::Win32Error;
            }
            from += step;
            offset += step;
            count -= step;
        }
        return Status::Ok;
    }

    Result<std::size_t> DoReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        OVERLAPPED position = PositionOf(offset);
        DWORD read = 0;
        if (!ReadFile(file_, buffer, static_cast<DWORD>(count), &read, &position) &&
            GetLastError() != ERROR_HANDLE_EOF) {
            return Status::Win32Error;
        }
        return std::size_t{read};
    }

    Status DoCommit() override {
        // Where an older picture is at stake, the new one must be on the disk before it takes that one's name.
        if (replaces_ && !(MayGoOn(CommitStep::Flush) && FlushFileBuffers(file_))) {
            return Status::Win32Error;
        }
        if (!MayGoOn(CommitStep::Name) || !SetDeleteOnClose(file_, false)) {
            return Status::Win32Error;
        }
        const bool isClosed = CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE)) && MayGoOn(CommitStep::Close);
        if (!isClosed || !MayGoOn(CommitStep::Replace) ||
            !MoveFileExW(Wide(scratchName_), Wide(target_), MOVEFILE_REPLACE_EXISTING)) {
            DeleteFileW(Wide(scratchName_));
            return Status::Win32Error;
        }
        return Status::Ok;
    }

  private:
    bool MayGoOn(CommitStep step) const { return !gate_ || gate_(step); }

    static OVERLAPPED PositionOf(std::uint64_t offset) {
        OVERLAPPED position{};
        position.Offset = static_cast<DWORD>(offset);
        position.OffsetHigh = static_cast<DWORD>(offset >> 32);
        return position;
    }

    std::u16string target_;
    bool replaces_;
    CommitGate gate_;
    std::u16string scratchName_;
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

} // namespace

Result<std::unique_ptr<OutputFile>> OutputFile::Create(const std::u16string& target, CommitGate gate) {
    const DWORD attributes = GetFileAttributesW(Wide(target));
    if (target.empty() ||
        (attributes != INVALID_FILE_ATTRIBUTES &&
         ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0 || !CanReplace(target)))) {
        return Status::GenericError;
    }
    auto file = std::make_unique<WindowsOutputFile>(target, attributes != INVALID_FILE_ATTRIBUTES, std::move(gate));
    if (const Status status = file->Open(); status != Status::Ok) {
        return status;
    }
    return std::unique_ptr<OutputFile>(std::move(file));
}

} // namespace imaginglibrary
