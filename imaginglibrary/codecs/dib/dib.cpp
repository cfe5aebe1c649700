// Delivers the pixels of a device-independent bitmap from the top, however they are stored.
#include "imaginglibrary/codecs/dib/dib.h"
#include "imaginglibrary/codecs/dib/dibrle.h"
#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::array<std::uint32_t, 4> Masks555{0x7C00, 0x03E0, 0x001F, 0};
constexpr std::array<std::uint32_t, 4> Masks565{0xF800, 0x07E0, 0x001F, 0};
constexpr std::array<std::uint32_t, 4> Masks888{0xFF0000, 0x00FF00, 0x0000FF, 0};

bool SameColors(const std::array<std::uint32_t, 4>& a, const std::array<std::uint32_t, 4>& b) {
    return std::equal(a.begin(), a.begin() + 3, b.begin());
}

bool HasMasks(const Dib& dib) { return dib.masks[0] != 0 || dib.masks[1] != 0 || dib.masks[2] != 0; }

PixelFormat FormatOf(const Dib& dib) {
    switch (dib.bitsPerPixel) {
    case 1:
        return PixelFormat::Indexed1;
    case 4:
        return PixelFormat::Indexed4;
    case 8:
        return PixelFormat::Indexed8;
    case 16:
        if (!HasMasks(dib) || SameColors(dib.masks, Masks555)) {
            return PixelFormat::Rgb555;
        }
        return SameColors(dib.masks, Masks565) ? PixelFormat::Rgb565 : PixelFormat::Rgb32;
    case 24:
        return PixelFormat::Rgb24;
    default:
        return PixelFormat::Rgb32;
    }
}

bool NeedsMasking(const Dib& dib) {
    return FormatOf(dib) == PixelFormat::Rgb32 && HasMasks(dib) &&
           !(dib.bitsPerPixel == 32 && SameColors(dib.masks, Masks888));
}

// The channel that a mask cuts out, stretched to 0 to 255.
std::uint8_t Channel(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0) {
        return 0;
    }
    const std::uint32_t most = mask >> std::countr_zero(mask);
    const std::uint64_t bits = (value & mask) >> std::countr_zero(mask);
    return static_cast<std::uint8_t>((bits * 255 + most / 2) / most);
}

void ApplyMasks(const Dib& dib, const std::uint8_t* stored, std::uint8_t* row) {
    for (std::size_t x = 0; x < dib.width; ++x) {
        const std::uint32_t value =
            dib.bitsPerPixel == 16 ? LittleEndian16(stored + 2 * x) : LittleEndian32(stored + 4 * x);
        row[4 * x] = Channel(value, dib.masks[2]);
        row[4 * x + 1] = Channel(value, dib.masks[1]);
        row[4 * x + 2] = Channel(value, dib.masks[0]);
        row[4 * x + 3] = 255;
    }
}

// Reads stored rows a strip at a time, for a file mostly keeps the bottom row first.
class StoredRows : public RowReader {
  public:
    StoredRows(std::shared_ptr<const InputFile> file, const Dib& dib, std::uint64_t pixels)
        : file_(std::move(file)), dib_(dib), pixels_(pixels), stride_(DibStride(dib.width, dib.bitsPerPixel)),
          rowBytes_((std::size_t{dib.width} * dib.bitsPerPixel + 7) / 8),
          stripRows_(static_cast<std::uint32_t>(std::clamp<std::uint64_t>(StripBytes / stride_, 1, dib.height))) {}

    Status ReadRow(std::uint8_t* row) override {
        if (next_ >= stripEnd_) {
            if (const Status status = ReadStrip(); status != Status::Ok) {
                return status;
            }
        }
        const std::uint32_t inStrip = dib_.topDown ? next_ - stripStart_ : stripEnd_ - 1 - next_;
        const std::uint8_t* stored = strip_.data() + static_cast<std::size_t>(stride_) * inStrip;
        if (NeedsMasking(dib_)) {
            ApplyMasks(dib_, stored, row);
        } else {
            std::memcpy(row, stored, rowBytes_);
        }
        ++next_;
        return Status::Ok;
    }

  private:
    static constexpr std::uint64_t StripBytes = 65536;

    // The last row of a file may lack its padding.
    Status ReadStrip() {
        stripStart_ = next_;
        stripEnd_ = std::min(next_ + stripRows_, dib_.height);
        const std::uint64_t firstStored = dib_.topDown ? stripStart_ : dib_.height - stripEnd_;
        const std::uint32_t rows = stripEnd_ - stripStart_;
        const auto bytes = static_cast<std::size_t>(stride_ * (rows - 1) + rowBytes_);
        strip_.resize(static_cast<std::size_t>(stride_) * rows);
        return file_->ReadExactlyAt(pixels_ + stride_ * firstStored, strip_.data(), bytes);
    }

    std::shared_ptr<const InputFile> file_;
    Dib dib_;
    std::uint64_t pixels_;
    std::uint64_t stride_;
    std::size_t rowBytes_;
    std::uint32_t stripRows_;
    std::uint32_t next_ = 0;
    std::uint32_t stripStart_ = 0;
    std::uint32_t stripEnd_ = 0;
    std::vector<std::uint8_t> strip_;
};

class DibPicture : public Decoder {
  public:
    DibPicture(std::shared_ptr<const InputFile> file, Dib dib, std::uint64_t pixels)
        : file_(std::move(file)), dib_(std::move(dib)), pixels_(pixels), info_{.width = dib_.width,
                                                                               .height = dib_.height,
                                                                               .format = FormatOf(dib_),
                                                                               .palette = dib_.palette,
                                                                               .resolution = dib_.resolution} {}

    const PictureInfo& Info() const override { return info_; }

    std::shared_ptr<FileDamage> Damage() const override { return IsCompressed() ? damage_ : nullptr; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        if (IsCompressed()) {
            return OpenRleRows(file_, dib_, pixels_, *damage_);
        }
        return std::unique_ptr<RowReader>(std::make_unique<StoredRows>(file_, dib_, pixels_));
    }

    bool HasRowsFromBottom() const override { return !IsCompressed(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        Dib reversed = dib_;
        reversed.topDown = !dib_.topDown;
        return std::unique_ptr<RowReader>(std::make_unique<StoredRows>(file_, reversed, pixels_));
    }

  private:
    bool IsCompressed() const {
        return dib_.compression == DibCompression::Rle4 || dib_.compression == DibCompression::Rle8;
    }

    std::shared_ptr<const InputFile> file_;
    Dib dib_;
    std::uint64_t pixels_;
    PictureInfo info_;
    std::shared_ptr<FileDamage> damage_ = std::make_shared<FileDamage>();
};

} // namespace

std::uint64_t DibStride(std::uint32_t width, unsigned bitsPerPixel) {
    return (std::uint64_t{width} * bitsPerPixel + 31) / 32 * 4;
}

Result<std::unique_ptr<Decoder>> OpenDib(std::shared_ptr<const InputFile> file, Dib dib, std::uint64_t pixels) {
    return std::unique_ptr<Decoder>(std::make_unique<DibPicture>(std::move(file), std::move(dib), pixels));
}

} // namespace imaginglibrary
