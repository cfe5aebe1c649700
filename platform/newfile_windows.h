// A file that appears whole or not at all.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace lumbrix {

// Lies beside the target under a name of its own meanwhile. What is not put in the target's place is deleted, by the
// system itself should the process be killed. Where something fails, the system's error is that of the first failure.
class NewFile {
  public:
    explicit NewFile(const std::u16string& folder);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    explicit operator bool() const { return file_ != INVALID_HANDLE_VALUE; }

    bool Write(const void* bytes, std::size_t count) const;

    // Once it is on the disk. There is no file any more then, nor where that fails.
    bool PutInPlaceOf(const std::u16string& target);

  private:
    bool KeepAndClose();

    wchar_t name_[MAX_PATH] = L"";
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

} // namespace lumbrix
