// An open file of the standard library that closes itself.
#pragma once

#include "bench/barecodecs/rows.h"

#include <cstdio>

namespace barecodecs {

class File {
  public:
    File(const std::string& path, const char* mode) : file_(std::fopen(path.c_str(), mode)) {
        Require(file_ != nullptr, path.c_str());
    }
    ~File() {
        if (file_ != nullptr) {
            std::fclose(file_);
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::FILE* Get() const { return file_; }

    // What was written may only fail now.
    void Close() {
        Require(std::fclose(file_) == 0, "closing");
        file_ = nullptr;
    }

  private:
    std::FILE* file_;
};

} // namespace barecodecs
