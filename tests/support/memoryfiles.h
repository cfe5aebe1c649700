// Files that exist in memory only, and can be made to fail.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
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
        std::memcpy(buffer, bytes_.data() + offset, available);
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

inline imaginglibrary::Result<std::unique_ptr<imaginglibrary::Decoder>> OpenBytes(const imaginglibrary::Codec& codec,
                                                                                  std::string bytes) {
    return codec.open(std::make_shared<MemoryInput>(std::move(bytes)));
}

// The file that a codec makes of a picture; empty where it fails.
inline std::string BytesWritten(const imaginglibrary::Codec& codec, const imaginglibrary::PixelSource& picture) {
    MemoryOutput file;
    if (codec.write(picture, {}, {}, file) != imaginglibrary::Status::Ok ||
        file.Commit() != imaginglibrary::Status::Ok) {
        return {};
    }
    return file.Bytes();
}

// A file that must open; none where the test fails over it.
inline std::unique_ptr<imaginglibrary::Decoder> Opened(const imaginglibrary::Codec& codec, std::string bytes) {
    auto picture = OpenBytes(codec, std::move(bytes));
    EXPECT_EQ(picture.GetStatus(), imaginglibrary::Status::Ok);
    return picture.Ok() ? std::move(*picture) : nullptr;
}

// What a codec reads of what it wrote.
inline std::unique_ptr<imaginglibrary::Decoder> Rewritten(const imaginglibrary::Codec& codec,
                                                          const imaginglibrary::PixelSource& picture) {
    return Opened(codec, BytesWritten(codec, picture));
}

// Opens and reads a file that may be broken in any way; the status of whichever failed first.
inline imaginglibrary::Status ReadAllRows(const imaginglibrary::Codec& codec, std::string bytes) {
    const auto picture = OpenBytes(codec, std::move(bytes));
    return picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus();
}

// All pixels of a file that must open.
inline std::vector<imaginglibrary::Color> ColorsOf(const imaginglibrary::Codec& codec, std::string bytes) {
    const auto picture = Opened(codec, std::move(bytes));
    return picture ? ColorsOf(*picture) : std::vector<imaginglibrary::Color>();
}

} // namespace tests
