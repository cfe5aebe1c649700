// A file that appears whole or not at all: written beside its target, and put in its place in one step.
#pragma once

#include "imaginglibrary/core/status.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace imaginglibrary {

// What taking the target's place consists of.
enum class CommitStep {
    Flush, // to the disk; only where an older file is replaced
    Name,  // the file gets one, or is no longer deleted with its handle
    Close,
    Replace, // the target
};

// Asked before each step; false has it fail. For tests: no file system fails when it is told to.
using CommitGate = std::function<bool(CommitStep)>;

// Without a successful Commit the target stays as it was and nothing is left behind, even if the process is killed.
// Not for several threads at once.
class OutputFile {
  public:
    // GenericError if the target cannot be replaced: its folder is missing or closed to us, it is a folder, it is
    // read-only, or it is open elsewhere (an image that was loaded from it and still lives counts).
    static Result<std::unique_ptr<OutputFile>> Create(const std::u16string& target, CommitGate gate = {});

    virtual ~OutputFile() = default;

    // Bytes written so far at the farthest.
    std::uint64_t Size() const { return size_; }

    // Appends behind the farthest byte. The first failure stays: every later call gives it back, Commit too.
    Status Append(const void* bytes, std::size_t count) { return WriteAt(size_, bytes, count); }

    // Writes at any position; a gap before it reads as zeros.
    Status WriteAt(std::uint64_t offset, const void* bytes, std::size_t count);

    // Reads back what was written, for codecs that patch their own output; fewer bytes only at the end.
    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count);

    // Flushes and replaces the target. Where an older file is replaced, the new one is on the disk before.
    Status Commit();

  protected:
    virtual Status DoWriteAt(std::uint64_t offset, const void* bytes, std::size_t count) = 0;
    virtual Result<std::size_t> DoReadAt(std::uint64_t offset, void* buffer, std::size_t count) = 0;
    virtual Status DoCommit() = 0;

  private:
    void Gather(const std::uint8_t* bytes, std::size_t count);
    Status Flush();

    Status failure_ = Status::Ok;
    std::uint64_t size_ = 0;
    std::uint64_t bufferStart_ = 0; // codecs write in small pieces; consecutive ones are gathered here
    std::vector<std::uint8_t> buffer_;
};

} // namespace imaginglibrary
