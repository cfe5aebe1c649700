// Mirrors that take rows as they come.
#include "imaginglibrary/operations/mirror.h"

#include "imaginglibrary/core/packing.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

class MirroredRows : public RowReader {
  public:
    MirroredRows(std::unique_ptr<RowReader> rows, const PictureInfo& info)
        : rows_(std::move(rows)), width_(info.width), bits_(BitsPerPixel(info.format)),
          row_(BytesPerRow(info.format, info.width)), values_(bits_ < 8 ? info.width : 0) {}

    Status ReadRow(std::uint8_t* row) override {
        if (const Status status = rows_->ReadRow(row_.data()); status != Status::Ok) {
            return status;
        }
        if (bits_ < 8) {
            UnpackPixels(row_.data(), 0, bits_, values_.data(), width_);
            std::reverse(values_.begin(), values_.end());
            PackPixels(values_.data(), bits_, row, width_);
            return Status::Ok;
        }
        const std::size_t bytes = bits_ / 8;
        for (std::size_t x = 0; x < width_; ++x) {
            std::memcpy(row + (width_ - 1 - x) * bytes, &row_[x * bytes], bytes);
        }
        return Status::Ok;
    }

  private:
    std::unique_ptr<RowReader> rows_;
    std::size_t width_;
    unsigned bits_;
    std::vector<std::uint8_t> row_;
    std::vector<std::uint8_t> values_; // of pixels of less than a byte
};

class MirroredPicture : public PixelSource {
  public:
    explicit MirroredPicture(std::shared_ptr<const PixelSource> picture) : picture_(std::move(picture)) {}

    const PictureInfo& Info() const override { return picture_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override { return MirroredReader(picture_->OpenRows()); }

    bool HasRowsFromBottom() const override { return picture_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        return MirroredReader(picture_->OpenRowsFromBottom());
    }

  private:
    Result<std::unique_ptr<RowReader>> MirroredReader(Result<std::unique_ptr<RowReader>> rows) const {
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(std::make_unique<MirroredRows>(std::move(*rows), Info()));
    }

    std::shared_ptr<const PixelSource> picture_;
};

class UpsideDownPicture : public PixelSource {
  public:
    explicit UpsideDownPicture(std::shared_ptr<const PixelSource> picture) : picture_(std::move(picture)) {}

    const PictureInfo& Info() const override { return picture_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override { return picture_->OpenRowsFromBottom(); }

    bool HasRowsFromBottom() const override { return true; }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override { return picture_->OpenRows(); }

  private:
    std::shared_ptr<const PixelSource> picture_;
};

} // namespace

std::shared_ptr<const PixelSource> Mirrored(std::shared_ptr<const PixelSource> picture) {
    return std::make_shared<MirroredPicture>(std::move(picture));
}

std::shared_ptr<const PixelSource> UpsideDown(std::shared_ptr<const PixelSource> picture) {
    return std::make_shared<UpsideDownPicture>(std::move(picture));
}

} // namespace imaginglibrary
