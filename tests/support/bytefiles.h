// Files that are bytes in memory, to be read, or to be written up to a limit.
#pragma once

#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace tests {

class MemoryInput : public imaginglibrary::InputFile {
  public:
    explicit MemoryInput(std::string bytes) : bytes_(std::move(bytes)) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    imaginglibrary::Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset >= bytes_.size()) {
            return std::size_t{0};
        }
        const std::size_t available = std::min(count, bytes_.size() - static_cast<std::size_t>(offset));
        std::copy_n(bytes_.data() + offset, available, static_cast<char*>(buffer));
        return available;
    }

  private:
    std::string bytes_;
};

// Keeps what is written up to `room` bytes and fails behind them, like a full disk.
class MemoryOutput : public imaginglibrary::OutputFile {
  public:
    static constexpr imaginglibrary::Status DiskFull = imaginglibrary::Status::AccessDenied;

    explicit MemoryOutput(std::size_t room = std::string().max_size()) : room_(room) {}

    // Complete only behind a Commit.
    const std::string& Bytes() const { return bytes_; }

  protected:
    imaginglibrary::Status DoWriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
        const auto start = static_cast<std::size_t>(offset);
        if (start > room_ || count > room_ - start) {
            return DiskFull;
        }
        bytes_.resize(std::max(bytes_.size(), start + count));
        std::memcpy(bytes_.data() + start, bytes, count);
        return imaginglibrary::Status::Ok;
    }

    imaginglibrary::Result<std::size_t> DoReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        return MemoryInput(bytes_).ReadAt(offset, buffer, count);
    }

    imaginglibrary::Status DoCommit() override { return imaginglibrary::Status::Ok; }

  private:
    std::size_t room_;
    std::string bytes_;
};

} // namespace tests
