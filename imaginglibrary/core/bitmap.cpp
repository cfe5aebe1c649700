// A whole picture in memory.
#include "imaginglibrary/core/bitmap.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/rowpump.h"

#include <cstring>

namespace imaginglibrary {

namespace {

class BitmapRows : public RowReader {
  public:
    explicit BitmapRows(std::shared_ptr<const Bitmap> bitmap) : bitmap_(std::move(bitmap)) {}

    Status ReadRow(std::uint8_t* row) override {
        std::memcpy(row, bitmap_->Row(next_++), bitmap_->RowBytes());
        return Status::Ok;
    }

  private:
    std::shared_ptr<const Bitmap> bitmap_;
    std::uint32_t next_ = 0;
};

} // namespace

Bitmap::Bitmap(PictureInfo info)
    : info_(std::move(info)), rowBytes_(BytesPerRow(info_.format, info_.width)), bytes_(rowBytes_ * info_.height) {}

Result<std::shared_ptr<Bitmap>> Bitmap::Create(PictureInfo info) {
    if (!IsAcceptableSize(info.width, info.height) || BitsPerPixel(info.format) == 0) {
        return Status::InvalidParameter;
    }
    if (std::uint64_t{BytesPerRow(info.format, info.width)} * info.height > MaximumPictureBytes) {
        return Status::OutOfMemory;
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
    return std::unique_ptr<RowReader>(std::make_unique<BitmapRows>(shared_from_this()));
}

} // namespace imaginglibrary
