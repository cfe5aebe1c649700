// A file opened for reading that nobody may write while it is open.
#pragma once

#include "imaginglibrary/core/status.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace imaginglibrary {

// Reads at given positions and keeps no cursor, so several threads may share it. Closed by its destructor.
class InputFile {
  public:
    // FileNotFound where there is no such file, GenericError where it is there but cannot be opened (a folder, no
    // permission, open for writing elsewhere).
    static Result<std::shared_ptr<const InputFile>> Open(const std::u16string& path);

    virtual ~InputFile() = default;

    virtual std::uint64_t Size() const = 0;

    // Reads up to `count` bytes from `offset` on and gives back how many; fewer only at the end of the file.
    virtual Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const = 0;

    // Reads exactly `count` bytes; UndecodableContent if the file ends before.
    Status ReadExactlyAt(std::uint64_t offset, void* buffer, std::size_t count) const;
};

// A cursor over a file with a buffer of its own, for decoders that read forward in small pieces.
class ByteReader {
  public:
    explicit ByteReader(std::shared_ptr<const InputFile> file, std::uint64_t offset = 0);

    std::uint64_t Position() const { return bufferStart_ + next_; }
    void Seek(std::uint64_t offset);

    // Gives back how many of `count` bytes there were: fewer at the end of the file and where reading fails.
    std::size_t Read(void* buffer, std::size_t count);

    // The next byte, or -1 where there is none.
    int ReadByte();

    // Why reading has failed; Ok where it has not, for the end of the file is no failure.
    Status Failure() const { return failure_; }

    // What a missing byte means for those who need it: a file that is too short, or the failure.
    Status WhyNoMore() const { return failure_ == Status::Ok ? UndecodableContent : failure_; }

  private:
    bool Refill();

    std::shared_ptr<const InputFile> file_;
    std::uint64_t bufferStart_;
    std::size_t next_ = 0;
    std::size_t filled_ = 0;
    Status failure_ = Status::Ok;
    std::unique_ptr<std::uint8_t[]> buffer_;
};

} // namespace imaginglibrary
