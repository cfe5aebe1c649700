// Turns by right angles, and mirrors.
#include "imaginglibrary/operations/turn.h"

#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/rowwatch.h"
#include "imaginglibrary/operations/mirror.h"
#include "imaginglibrary/operations/turninmemory.h"

#include <mutex>
#include <utility>

namespace imaginglibrary {

namespace {

constexpr unsigned HalfTurn = 2;

bool SwapsSides(unsigned code) { return (code & 1) != 0; }

// The code of one turn behind another. A mirror makes what comes before it go the other way round.
unsigned Combined(unsigned first, unsigned second) {
    const unsigned quarters = (first & Mirror) != 0 ? first - (second & QuarterTurns) : first + second;
    return (quarters & QuarterTurns) | ((first ^ second) & Mirror);
}

// The turned picture by way of its source's rows; null where their order does not allow it.
std::shared_ptr<const PixelSource> TurnedInRows(const std::shared_ptr<const PixelSource>& picture, unsigned code) {
    switch (code) {
    case Mirror:
        return Mirrored(picture);
    case HalfTurn:
        return picture->HasRowsFromBottom() ? Mirrored(UpsideDown(picture)) : nullptr;
    case HalfTurn | Mirror:
        return picture->HasRowsFromBottom() ? UpsideDown(picture) : nullptr;
    default:
        return nullptr;
    }
}

class TurnedPicture : public PixelSource {
  public:
    TurnedPicture(std::shared_ptr<const PixelSource> source, unsigned code)
        : source_(std::move(source)), code_(code), info_(source_->Info()), inRows_(TurnedInRows(source_, code)) {
        if (SwapsSides(code)) {
            std::swap(info_.width, info_.height);
            std::swap(info_.resolution.horizontal, info_.resolution.vertical);
        }
    }

    const std::shared_ptr<const PixelSource>& Source() const { return source_; }
    unsigned Code() const { return code_; }
    bool NeedsMemory() const { return inRows_ == nullptr; }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        if (const Status status = Prepare(nullptr); status != Status::Ok) {
            return status;
        }
        return (NeedsMemory() ? InMemory() : inRows_)->OpenRows();
    }

    bool HasRowsFromBottom() const override { return NeedsMemory() || inRows_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        if (const Status status = Prepare(nullptr); status != Status::Ok) {
            return status;
        }
        return (NeedsMemory() ? InMemory() : inRows_)->OpenRowsFromBottom();
    }

    Status Prepare(const std::shared_ptr<RowWatch>& watch) const override {
        if (!NeedsMemory() || InMemory() != nullptr) {
            return Status::Ok;
        }
        auto turned = TurnInMemory(watch != nullptr ? *WatchedBy(watch, source_) : *source_, code_, info_);
        if (!turned.Ok()) {
            return turned.GetStatus();
        }
        const std::lock_guard lock(mutex_);
        inMemory_ = std::move(*turned);
        return Status::Ok;
    }

  private:
    std::shared_ptr<const PixelSource> InMemory() const {
        const std::lock_guard lock(mutex_);
        return inMemory_;
    }

    std::shared_ptr<const PixelSource> source_;
    unsigned code_;
    PictureInfo info_;
    std::shared_ptr<const PixelSource> inRows_;
    mutable std::mutex mutex_; // not held while rows are read; who comes second turns them once more
    mutable std::shared_ptr<const PixelSource> inMemory_; // null before the first reading
};

} // namespace

Result<std::shared_ptr<const PixelSource>> Turned(std::shared_ptr<const PixelSource> picture, unsigned code) {
    if (const auto* before = dynamic_cast<const TurnedPicture*>(picture.get())) {
        code = Combined(before->Code(), code);
        picture = std::shared_ptr<const PixelSource>(before->Source());
    }
    if (code == 0) {
        return picture;
    }
    auto turned = std::make_shared<TurnedPicture>(std::move(picture), code);
    if (turned->NeedsMemory() && !Bitmap::CanHold(turned->Info())) {
        return Status::OutOfMemory;
    }
    return std::shared_ptr<const PixelSource>(std::move(turned));
}

} // namespace imaginglibrary
