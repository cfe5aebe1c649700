// Part of a picture.
#include "imaginglibrary/operations/crop.h"

#include "imaginglibrary/core/packing.h"

#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

// Moves `count` pixels of `bits` bits each from position `first` of a row to the start of another.
void CopyPixels(const std::uint8_t* from, std::size_t first, std::size_t count, unsigned bits, std::uint8_t* to) {
    if (bits % 8 == 0 || first * bits % 8 == 0) {
        std::memcpy(to, from + first * bits / 8, (count * bits + 7) / 8);
        return;
    }
    std::memset(to, 0, (count * bits + 7) / 8);
    for (std::size_t i = 0; i < count; ++i) {
        PutPacked(to, i, bits, PackedAt(from, first + i, bits));
    }
}

class CroppedRows : public RowReader {
  public:
    // `skipped` rows come before those of the area.
    CroppedRows(std::unique_ptr<RowReader> rows, const PictureInfo& source, const PixelRect& area, std::int64_t skipped)
        : rows_(std::move(rows)), bits_(BitsPerPixel(source.format)), area_(area), skipped_(skipped),
          row_(BytesPerRow(source.format, source.width)) {}

    Status ReadRow(std::uint8_t* row) override {
        for (; skipped_ > 0; --skipped_) {
            if (const Status status = rows_->ReadRow(row_.data()); status != Status::Ok) {
                return status;
            }
        }
        const Status status = rows_->ReadRow(row_.data());
        if (status == Status::Ok) {
            CopyPixels(row_.data(), static_cast<std::size_t>(area_.left), static_cast<std::size_t>(area_.Width()),
                       bits_, row);
        }
        return status;
    }

  private:
    std::unique_ptr<RowReader> rows_;
    unsigned bits_;
    PixelRect area_;
    std::int64_t skipped_;
    std::vector<std::uint8_t> row_;
};

class CroppedPicture : public PixelSource {
  public:
    CroppedPicture(std::shared_ptr<const PixelSource> picture, const PixelRect& area)
        : picture_(std::move(picture)), area_(area), info_(picture_->Info()) {
        info_.width = static_cast<std::uint32_t>(area.Width());
        info_.height = static_cast<std::uint32_t>(area.Height());
    }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        return CroppedReader(picture_->OpenRows(), area_.top);
    }

    bool HasRowsFromBottom() const override { return picture_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        return CroppedReader(picture_->OpenRowsFromBottom(), std::int64_t{picture_->Info().height} - area_.bottom);
    }

    Status Prepare(const std::shared_ptr<RowWatch>& watch) const override { return picture_->Prepare(watch); }

  private:
    Result<std::unique_ptr<RowReader>> CroppedReader(Result<std::unique_ptr<RowReader>> rows,
                                                     std::int64_t skipped) const {
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(
            std::make_unique<CroppedRows>(std::move(*rows), picture_->Info(), area_, skipped));
    }

    std::shared_ptr<const PixelSource> picture_;
    PixelRect area_;
    PictureInfo info_;
};

} // namespace

std::shared_ptr<const PixelSource> CroppedTo(std::shared_ptr<const PixelSource> picture, const PixelRect& area) {
    return std::make_shared<CroppedPicture>(std::move(picture), area);
}

} // namespace imaginglibrary
