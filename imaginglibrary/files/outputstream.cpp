// A stream of the caller's in the place of a file that is written.
#include "imaginglibrary/files/outputstream.h"

#include <algorithm>
#include <array>

namespace imaginglibrary {

namespace {

class OutputStream : public OutputFile {
  public:
    explicit OutputStream(Stream* stream) : cursor_(stream) {}

  protected:
    Status DoWriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
        if (const Status status = FillUpTo(offset); status != Status::Ok) {
            return status;
        }
        const Status status = cursor_.WriteAt(offset, bytes, count);
        end_ = std::max<std::uint64_t>(end_, offset + count);
        return status;
    }

    Result<std::size_t> DoReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        return cursor_.ReadAt(offset, buffer, count);
    }

    Status DoCommit() override { return cursor_.MoveTo(end_) ? Status::Ok : Status::Win32Error; }

  private:
    // Not every stream has zeros in a gap.
    Status FillUpTo(std::uint64_t offset) {
        static constexpr std::array<std::uint8_t, 4096> Zeros{};
        while (end_ < offset) {
            const auto step = static_cast<std::size_t>(std::min<std::uint64_t>(offset - end_, Zeros.size()));
            if (const Status status = cursor_.WriteAt(end_, Zeros.data(), step); status != Status::Ok) {
                return status;
            }
            end_ += step;
        }
        return Status::Ok;
    }

    StreamCursor cursor_;
    std::uint64_t end_ = 0; // of what was written
};

} // namespace

std::unique_ptr<OutputFile> MakeOutputStream(Stream* stream) { return std::make_unique<OutputStream>(stream); }

} // namespace imaginglibrary
