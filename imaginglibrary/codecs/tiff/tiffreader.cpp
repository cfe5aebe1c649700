// Reads the first picture of a TIFF file.
#include "imaginglibrary/codecs/tiff/tiffreader.h"

#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/codecs/tiff/tiffpixels.h"

#include <algorithm>
#include <array>
#include <vector>

namespace imaginglibrary {

namespace {

class TiffRows : public RowReader {
  public:
    TiffRows(std::shared_ptr<const TiffLayout> layout, std::unique_ptr<TiffSampleRows> samples)
        : layout_(std::move(layout)), samples_(std::move(samples)), pixels_(*layout_) {}

    Status ReadRow(std::uint8_t* row) override {
        const auto planes = samples_->ReadRow();
        if (planes.Ok()) {
            pixels_.MakeRow(*planes, row);
        }
        return planes.GetStatus();
    }

  private:
    std::shared_ptr<const TiffLayout> layout_;
    std::unique_ptr<TiffSampleRows> samples_;
    TiffPixels pixels_;
};

// Rows whose colours libtiff converts, a strip or a row of tiles at a time.
class ConvertedTiffRows : public RowReader {
  public:
    static Result<std::unique_ptr<RowReader>> Open(std::shared_ptr<const TiffLayout> layout,
                                                   std::unique_ptr<TiffInput> input) {
        std::unique_ptr<ConvertedTiffRows> rows(new ConvertedTiffRows(std::move(layout), std::move(input)));
        std::array<char, 1024> message;
        constexpr int StopOnError = 1;
        rows->isBegun_ = TIFFRGBAImageBegin(&rows->image_, rows->input_->Get(), StopOnError, message.data()) == 1;
        if (!rows->isBegun_) {
            return rows->input_->Failure();
        }
        rows->image_.req_orientation = rows->image_.orientation; // nothing is turned or flipped
        return std::unique_ptr<RowReader>(std::move(rows));
    }

    ~ConvertedTiffRows() override {
        if (isBegun_) {
            TIFFRGBAImageEnd(&image_);
        }
    }

    Status ReadRow(std::uint8_t* row) override {
        const std::uint32_t inBand = y_ % layout_->bandRows;
        if (inBand == 0) {
            if (const Status status = ReadBand(); status != Status::Ok) {
                return status;
            }
        }
        ++y_;
        const std::uint32_t* pixel = raster_.get() + std::size_t{layout_->info.width} * inBand;
        for (std::uint32_t x = 0; x < layout_->info.width; ++x, ++pixel, row += 3) {
            row[0] = static_cast<std::uint8_t>(TIFFGetB(*pixel));
            row[1] = static_cast<std::uint8_t>(TIFFGetG(*pixel));
            row[2] = static_cast<std::uint8_t>(TIFFGetR(*pixel));
        }
        return Status::Ok;
    }

  private:
    ConvertedTiffRows(std::shared_ptr<const TiffLayout> layout, std::unique_ptr<TiffInput> input)
        : layout_(std::move(layout)), input_(std::move(input)) {}

    Status ReadBand() {
        const std::uint32_t rows = std::min(layout_->bandRows, layout_->info.height - y_);
        if (!raster_) {
            raster_ = std::make_unique<std::uint32_t[]>(std::size_t{layout_->info.width} * layout_->bandRows);
        }
        image_.row_offset = static_cast<int>(y_);
        const bool isRead = TIFFRGBAImageGet(&image_, raster_.get(), layout_->info.width, rows) == 1;
        return isRead ? Status::Ok : input_->Failure();
    }

    std::shared_ptr<const TiffLayout> layout_;
    std::unique_ptr<TiffInput> input_;
    TIFFRGBAImage image_{};
    bool isBegun_ = false;
    std::unique_ptr<std::uint32_t[]> raster_; // one band
    std::uint32_t y_ = 0;
};

class TiffDecoder : public Decoder {
  public:
    TiffDecoder(std::shared_ptr<const InputFile> file, TiffLayout layout)
        : file_(std::move(file)), layout_(std::make_shared<const TiffLayout>(std::move(layout))) {
        ReadTiffProperties(*file_, properties_);
    }

    const PictureInfo& Info() const override { return layout_->info; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        if (layout_->colors == TiffColors::Converted) {
            auto input = ReopenTiff(*layout_, file_);
            return input.Ok() ? ConvertedTiffRows::Open(layout_, std::move(*input)) : input.GetStatus();
        }
        auto samples = TiffSampleRows::Open(*layout_, file_);
        if (!samples.Ok()) {
            return samples.GetStatus();
        }
        return std::unique_ptr<RowReader>(std::make_unique<TiffRows>(layout_, std::move(*samples)));
    }

  private:
    std::shared_ptr<const InputFile> file_;
    std::shared_ptr<const TiffLayout> layout_;
};

} // namespace

Result<std::unique_ptr<Decoder>> OpenTiff(std::shared_ptr<const InputFile> file) {
    const auto input = OpenPreparedTiff(file);
    if (!input.Ok()) {
        return input.GetStatus();
    }
    auto layout = ReadTiffLayout((*input)->Get());
    if (!layout.Ok()) {
        return layout.GetStatus();
    }
    return std::unique_ptr<Decoder>(std::make_unique<TiffDecoder>(std::move(file), std::move(*layout)));
}

} // namespace imaginglibrary
