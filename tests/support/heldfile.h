// A file that somebody has open, so that it cannot be deleted; on Windows only, where that hinders anybody.
#pragma once

#include "platform/cleanup.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace tests {

class HeldFile {
  public:
    explicit HeldFile(const std::string& path)
        : file_(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                            nullptr)) {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE) << path;
    }
    ~HeldFile() { CloseHandle(file_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

  private:
    HANDLE file_;
};

// Whether a path has a line in the list of what is left to delete, in a program's folder.
inline bool IsListedForCleanUp(const std::string& path, const std::string& folder = lumbrix::ProgramFolder()) {
    const std::filesystem::path list = folder + "CleanUp.txt";
    return std::filesystem::exists(list) &&
           ("\r\n" + ReadBytes(list)).find("\r\n" + path + "\r\n") != std::string::npos;
}

} // namespace tests
