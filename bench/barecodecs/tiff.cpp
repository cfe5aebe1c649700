// TIFF with libtiff.
#include "bench/barecodecs/rows.h"

#include <algorithm>
#include <cstring>
#include <tiffio.h>
#include <vector>

namespace barecodecs {

namespace {

constexpr std::size_t StripBytes = 65536;

class TiffWriter : public Writer {
  public:
    TiffWriter(const std::string& path, Size size, Order order, const Settings& settings)
        : size_(size), order_(order), tiff_(TIFFOpen(path.c_str(), "w")),
          rowsPerStrip_(std::clamp<std::uint32_t>(StripBytes / size.RowBytes(), 1, size.height)),
          strip_(size.RowBytes() * rowsPerStrip_) {
        Require(tiff_ != nullptr, path.c_str());
        TIFFSetField(tiff_, TIFFTAG_IMAGEWIDTH, size.width);
        TIFFSetField(tiff_, TIFFTAG_IMAGELENGTH, size.height);
        TIFFSetField(tiff_, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff_, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(tiff_, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(tiff_, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(tiff_, TIFFTAG_ROWSPERSTRIP, rowsPerStrip_);
        TIFFSetField(tiff_, TIFFTAG_COMPRESSION, settings.isPacked ? COMPRESSION_LZW : COMPRESSION_NONE);
        if (settings.isPacked) {
            TIFFSetField(tiff_, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        }
    }
    ~TiffWriter() override {
        if (tiff_ != nullptr) {
            TIFFClose(tiff_);
        }
    }

    void WriteRow(std::uint8_t* row) override {
        if (order_ == Order::BlueFirst) {
            ExchangeOrder(row, size_.width);
        }
        const std::uint32_t rowOfStrip = y_ % rowsPerStrip_;
        std::memcpy(strip_.data() + size_.RowBytes() * rowOfStrip, row, size_.RowBytes());
        ++y_;
        if (rowOfStrip + 1 == rowsPerStrip_ || y_ == size_.height) {
            const auto bytes = static_cast<tmsize_t>(size_.RowBytes() * (rowOfStrip + 1));
            Require(TIFFWriteEncodedStrip(tiff_, (y_ - 1) / rowsPerStrip_, strip_.data(), bytes) == bytes, "a strip");
        }
    }

    void Finish() override {
        Require(TIFFFlush(tiff_) == 1, "the end of a TIFF file");
        TIFFClose(tiff_);
        tiff_ = nullptr;
    }

  private:
    Size size_;
    Order order_;
    TIFF* tiff_;
    std::uint32_t rowsPerStrip_;
    std::vector<std::uint8_t> strip_;
    std::uint32_t y_ = 0;
};

} // namespace

std::unique_ptr<Writer> WriteTiff(const std::string& path, Size size, Order order, const Settings& settings) {
    return std::make_unique<TiffWriter>(path, size, order, settings);
}

} // namespace barecodecs
