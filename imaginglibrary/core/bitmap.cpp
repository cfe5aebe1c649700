// A whole picture in memory.
#include "imaginglibrary/core/bitmap.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/rowpump.h"

#include <cstring>
#include <new>

namespace imaginglibrary {

namespace {

enum class Order { FromTop, FromBottom };

class BitmapRows : public RowReader {
  public:
    BitmapRows(std::shared_ptr<const Bitmap> bitmap, Order order) : bitmap_(std::move(bitmap)), order_(order) {}

    Status ReadRow(std::uint8_t* row) override {
        const std::uint32_t y = order_ == Order::FromTop ? next_ : bitmap_->Info().height - 1 - next_;
        std::memcpy(row, bitmap_->Row(y), bitmap_->RowBytes());
        ++next_;
        return Status::Ok;
    }

  private:
    std::shared_ptr<const Bitmap> bitmap_;
    Order order_;
    std::uint32_t next_ = 0;
};

} // namespace

Bitmap::Bitmap(PictureInfo info)
    : info_(std::move(info)), rowBytes_(BytesPerRow(info_.format, info_.width)),
      bytes_(static_cast<std::uint8_t*>(std::calloc(info_.height, rowBytes_))) {
    if (bytes_ == nullptr) {
        throw std::bad_alloc();
    }
}

Status Bitmap::CheckSize(const PictureInfo& info) {
    if (!IsAcceptableSize(info.width, info.height) || BitsPerPixel(info.format) == 0) {
        return Status::InvalidParameter;
    }
    const std::uint64_t bytes = std::uint64_t{BytesPerRow(info.format, info.width)} * info.height;
    return bytes > MaximumPictureBytes ? Status::OutOfMemory : Status::Ok;
}

Result<std::shared_ptr<Bitmap>> Bitmap::Create(PictureInfo info) {
    if (const Status status = CheckSize(info); status != Status::Ok) {
        return status;
    }
    return std::shared_ptr<Bitmap>(new Bitmap(std::move(info)));
}

Result<std::shared_ptr<Bitmap>> Bitmap::Copy(const PixelSource& picture) {
    auto bitmap = Create(picture.Info());
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    const Status status =
        ReadRowsInto(picture.OpenRows(), picture.Info().height, [&](std::uint32_t y) { return (*bitmap)->Row(y); });
    if (status != Status::Ok) {
        return status;
    }
    return bitmap;
}

Result<std::unique_ptr<RowReader>> Bitmap::OpenRows() const {
    return std::unique_ptr<RowReader>(std::make_unique<BitmapRows>(shared_from_this(), Order::FromTop));
}

Result<std::unique_ptr<RowReader>> Bitmap::OpenRowsFromBottom() const {
    return std::unique_ptr<RowReader>(std::make_unique<BitmapRows>(shared_from_this(), Order::FromBottom));
}

} // namespace imaginglibrary
