// Tells somebody how far the reading of a picture has come, and stops it when asked to.
#include "imaginglibrary/core/rowwatch.h"

namespace imaginglibrary {

namespace {

constexpr std::uint64_t Steps = 100;

class WatchedRows : public RowReader {
  public:
    // `height` rows are read, and told of as if they were `rows`.
    WatchedRows(std::unique_ptr<RowReader> reader, std::shared_ptr<RowWatch> watch, std::uint32_t height,
                std::uint32_t rows)
        : reader_(std::move(reader)), watch_(std::move(watch)), height_(height), rows_(rows) {}

    Status ReadRow(std::uint8_t* row) override {
        if (const Status status = reader_->ReadRow(row); status != Status::Ok) {
            return status;
        }
        const std::uint64_t stepBefore = read_ * Steps / height_;
        ++read_;
        if (read_ * Steps / height_ == stepBefore) {
            return Status::Ok;
        }
        return watch_->Tell(static_cast<std::uint32_t>(read_ * rows_ / height_), rows_) ? Status::Ok : Status::Aborted;
    }

  private:
    std::unique_ptr<RowReader> reader_;
    std::shared_ptr<RowWatch> watch_;
    std::uint32_t height_;
    std::uint32_t rows_;
    std::uint64_t read_ = 0;
};

class WatchedPicture : public PixelSource {
  public:
    WatchedPicture(std::shared_ptr<RowWatch> watch, std::shared_ptr<const PixelSource> picture, std::uint32_t rows)
        : watch_(std::move(watch)), picture_(std::move(picture)), rows_(rows) {}

    const PictureInfo& Info() const override { return picture_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        if (const Status status = picture_->Prepare(watch_); status != Status::Ok) {
            return status;
        }
        return WatchedReader(picture_->OpenRows());
    }

    bool HasRowsFromBottom() const override { return picture_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        if (const Status status = picture_->Prepare(watch_); status != Status::Ok) {
            return status;
        }
        return WatchedReader(picture_->OpenRowsFromBottom());
    }

    std::optional<ScaledPicture> ReducedTo(std::uint32_t width, std::uint32_t height) const override {
        auto reduced = picture_->ReducedTo(width, height);
        if (reduced) {
            reduced->picture = std::make_unique<WatchedPicture>(watch_, std::move(reduced->picture), rows_);
        }
        return reduced;
    }

  private:
    Result<std::unique_ptr<RowReader>> WatchedReader(Result<std::unique_ptr<RowReader>> reader) const {
        if (!reader.Ok()) {
            return reader.GetStatus();
        }
        return std::unique_ptr<RowReader>(
            std::make_unique<WatchedRows>(std::move(*reader), watch_, Info().height, rows_));
    }

    std::shared_ptr<RowWatch> watch_;
    std::shared_ptr<const PixelSource> picture_;
    std::uint32_t rows_;
};

} // namespace

std::shared_ptr<const PixelSource> WatchedBy(std::shared_ptr<RowWatch> watch,
                                             std::shared_ptr<const PixelSource> picture) {
    const std::uint32_t rows = picture->Info().height;
    return std::make_shared<WatchedPicture>(std::move(watch), std::move(picture), rows);
}

} // namespace imaginglibrary
