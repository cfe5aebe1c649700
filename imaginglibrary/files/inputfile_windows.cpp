// Reading on Windows: others may read the file too, nobody may write, rename or delete it.
#include "imaginglibrary/files/inputfile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace imaginglibrary {

namespace {

class WindowsInputFile : public InputFile {
  public:
    ~WindowsInputFile() override {
        if (file_ != INVALID_HANDLE_VALUE) {
            CloseHandle(file_);
        }
    }

    Status OpenAt(const std::u16string& path) {
        file_ = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ, FILE_SHARE_READ, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file_ == INVALID_HANDLE_VALUE) {
            const DWORD error = GetLastError();
            return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? Status::FileNotFound
                                                                                  : Status::GenericError;
        }
        return GetFileType(file_) == FILE_TYPE_DISK ? Status::Ok : Status::GenericError;
    }

    std::uint64_t Size() const override {
        LARGE_INTEGER size{};
        return GetFileSizeEx(file_, &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        constexpr std::size_t LargestRead = 1u << 20;
        auto* to = static_cast<char*>(buffer);
        std::size_t done = 0;
        while (done < count) {
            OVERLAPPED position{};
            position.Offset = static_cast<DWORD>(offset + done);
            position.OffsetHigh = static_cast<DWORD>((offset + done) >> 32);
            DWORD step = 0;
            if (!ReadFile(file_, to + done, static_cast<DWORD>(std::min(count - done, LargestRead)), &step,
                          &position)) {
                if (GetLastError() == ERROR_HANDLE_EOF) {
                    break;
                }
                return Status::Win32Error;
            }
            if (step == 0) {
                break;
            }
            done += step;
        }
        return done;
    }

  private:
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

} // namespace

Result<std::shared_ptr<const InputFile>> InputFile::Open(const std::u16string& path) {
    auto file = std::make_shared<WindowsInputFile>();
    if (const Status status = file->OpenAt(path); status != Status::Ok) {
        return status;
    }
    return std::shared_ptr<const InputFile>(std::move(file));
}

} // namespace imaginglibrary
