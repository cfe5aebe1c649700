// A stream of the caller's in the place of a file that is read.
#include "imaginglibrary/files/inputstream.h"

#include <algorithm>
#include <mutex>

namespace imaginglibrary {

namespace {

class InputStream : public InputFile {
  public:
    explicit InputStream(Stream* stream) : cursor_(stream) {}

    Status Measure() {
        const auto size = cursor_.Size();
        size_ = size.Ok() ? *size : 0;
        return size.GetStatus();
    }

    std::uint64_t Size() const override { return size_; }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset >= size_ || count == 0) {
            return std::size_t{0};
        }
        const std::lock_guard lock(mutex_);
        return cursor_.ReadAt(offset, buffer, static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)));
    }

  private:
    mutable std::mutex mutex_;
    mutable StreamCursor cursor_;
    std::uint64_t size_ = 0;
};

} // namespace

Result<std::shared_ptr<const InputFile>> OpenInputStream(Stream* stream) {
    auto file = std::make_shared<InputStream>(stream);
    if (const Status status = file->Measure(); status != Status::Ok) {
        return status;
    }
    return std::shared_ptr<const InputFile>(std::move(file));
}

} // namespace imaginglibrary
