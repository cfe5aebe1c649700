// Decodes the samples of a TIFF picture row by row, from strips or tiles.
#include "imaginglibrary/codecs/tiff/tiffsamples.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

unsigned PlaneCount(const TiffLayout& layout) { return layout.isPlanar ? layout.UsedSamples() : 1; }

class TiffStripRows : public TiffSampleRows {
  public:
    TiffStripRows(const TiffLayout& layout, std::vector<std::unique_ptr<TiffInput>> inputs)
        : inputs_(std::move(inputs)), rows_(inputs_.size(), std::vector<std::uint8_t>(layout.rowBytes)) {}

    Result<TiffPlanes> ReadRow() override {
        TiffPlanes planes{};
        for (std::size_t plane = 0; plane < inputs_.size(); ++plane) {
            if (TIFFReadScanline(inputs_[plane]->Get(), rows_[plane].data(), y_, static_cast<std::uint16_t>(plane)) !=
                1) {
                return inputs_[plane]->Failure();
            }
            planes[plane] = rows_[plane].data();
        }
        ++y_;
        return planes;
    }

  private:
    std::vector<std::unique_ptr<TiffInput>> inputs_; // one per plane
    std::vector<std::vector<std::uint8_t>> rows_;    // likewise
    std::uint32_t y_ = 0;
};

class TiffTileRows : public TiffSampleRows {
  public:
    TiffTileRows(const TiffLayout& layout, std::unique_ptr<TiffInput> input)
        : layout_(layout), input_(std::move(input)),
          tileRowBytes_(static_cast<std::size_t>(TIFFTileRowSize64(input_->Get()))),
          tile_(static_cast<std::size_t>(TIFFTileSize64(input_->Get()))) {
        TIFFGetField(input_->Get(), TIFFTAG_TILEWIDTH, &tileWidth_);
        TIFFGetField(input_->Get(), TIFFTAG_TILELENGTH, &tileLength_);
        for (unsigned plane = 0; plane < PlaneCount(layout); ++plane) {
            // Left unset, so that memory is taken only as tiles come in.
            bands_.push_back(std::make_unique_for_overwrite<std::uint8_t[]>(layout.rowBytes * layout.bandRows));
        }
    }

    Result<TiffPlanes> ReadRow() override {
        const std::uint32_t row = y_ % tileLength_;
        if (row == 0) {
            if (const Status status = ReadBand(); status != Status::Ok) {
                return status;
            }
        }
        ++y_;
        TiffPlanes planes{};
        for (std::size_t plane = 0; plane < bands_.size(); ++plane) {
            planes[plane] = bands_[plane].get() + layout_.rowBytes * row;
        }
        return planes;
    }

  private:
    Status ReadBand() {
        for (std::size_t plane = 0; plane < bands_.size(); ++plane) {
            std::size_t left = 0; // in bytes of a row
            for (std::uint32_t x = 0; x < layout_.info.width; x += tileWidth_, left += tileRowBytes_) {
                const std::uint32_t number =
                    TIFFComputeTile(input_->Get(), x, y_, 0, static_cast<std::uint16_t>(plane));
                if (TIFFReadEncodedTile(input_->Get(), number, tile_.data(), static_cast<tmsize_t>(tile_.size())) < 0) {
                    return input_->Failure();
                }
                PlaceTile(bands_[plane].get() + left, std::min(tileRowBytes_, layout_.rowBytes - left));
            }
        }
        return Status::Ok;
    }

    void PlaceTile(std::uint8_t* to, std::size_t count) const {
        const std::uint32_t rows = std::min(tileLength_, layout_.info.height - y_);
        const std::uint8_t* from = tile_.data();
        for (std::uint32_t row = 0; row < rows; ++row, to += layout_.rowBytes, from += tileRowBytes_) {
            std::memcpy(to, from, count);
        }
    }

    const TiffLayout& layout_;
    std::unique_ptr<TiffInput> input_;
    std::size_t tileRowBytes_;
    std::vector<std::uint8_t> tile_;
    std::uint32_t tileWidth_ = 0;
    std::uint32_t tileLength_ = 0;
    std::vector<std::unique_ptr<std::uint8_t[]>> bands_; // one per plane
    std::uint32_t y_ = 0;
};

} // namespace

Result<std::unique_ptr<TiffInput>> OpenPreparedTiff(std::shared_ptr<const InputFile> file) {
    auto input = TiffInput::Open(std::move(file));
    if (input.Ok()) {
        PrepareTiff((*input)->Get());
    }
    return input;
}

Result<std::unique_ptr<TiffInput>> ReopenTiff(const TiffLayout& layout, std::shared_ptr<const InputFile> file) {
    auto input = OpenPreparedTiff(std::move(file));
    if (!input.Ok()) {
        return input;
    }
    // The file may have been changed under us, and rows must fit the buffers whatever it says now.
    const auto now = ReadTiffLayout((*input)->Get());
    if (!now.Ok() || !now->IsMeasuredLike(layout)) {
        return UndecodableContent;
    }
    return input;
}

Result<std::unique_ptr<TiffSampleRows>> TiffSampleRows::Open(const TiffLayout& layout,
                                                             const std::shared_ptr<const InputFile>& file) {
    std::vector<std::unique_ptr<TiffInput>> inputs;
    for (unsigned count = layout.isTiled ? 1 : PlaneCount(layout); count > 0; --count) {
        auto input = ReopenTiff(layout, file);
        if (!input.Ok()) {
            return input.GetStatus();
        }
        inputs.push_back(std::move(*input));
    }
    if (layout.isTiled) {
        return std::unique_ptr<TiffSampleRows>(std::make_unique<TiffTileRows>(layout, std::move(inputs.front())));
    }
    return std::unique_ptr<TiffSampleRows>(std::make_unique<TiffStripRows>(layout, std::move(inputs)));
}

} // namespace imaginglibrary
