// Lays a picture over a colour.
#include "imaginglibrary/operations/layover.h"

#include "imaginglibrary/core/rowconverter.h"

#include <algorithm>
#include <array>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::size_t NarrowBytes = 3;
constexpr std::size_t WideBytes = 4;

// Blue, green and red, as pixels have them.
using Channels = std::array<std::uint8_t, NarrowBytes>;

constexpr unsigned DivideBy255(unsigned value) { return (value + 127) / 255; }

void OverStraight(const std::uint8_t* pixel, const Channels& below, std::uint8_t* to) {
    const unsigned alpha = pixel[3];
    for (std::size_t i = 0; i < below.size(); ++i) {
        to[i] = static_cast<std::uint8_t>(DivideBy255(pixel[i] * alpha + below[i] * (255 - alpha)));
    }
}

// A colour above its alpha counts as much as its alpha.
void OverPremultiplied(const std::uint8_t* pixel, const Channels& below, std::uint8_t* to) {
    const unsigned alpha = pixel[3];
    for (std::size_t i = 0; i < below.size(); ++i) {
        const unsigned color = std::min<unsigned>(pixel[i], alpha);
        to[i] = static_cast<std::uint8_t>(color + DivideBy255(below[i] * (255 - alpha)));
    }
}

Color Over(Color color, const Channels& below) {
    const std::uint8_t pixel[WideBytes] = {BlueOf(color), GreenOf(color), RedOf(color), AlphaOf(color)};
    Channels blended;
    OverStraight(pixel, below, blended.data());
    return MakeColor(blended[2], blended[1], blended[0]);
}

class LaidOverRows : public RowReader {
  public:
    LaidOverRows(std::unique_ptr<RowReader> rows, const PictureInfo& source, const Channels& below)
        : rows_(std::move(rows)), over_(source.format == PixelFormat::Pargb32 ? OverPremultiplied : OverStraight),
          below_(below), row_(BytesPerRow(source.format, source.width)) {}

    Status ReadRow(std::uint8_t* row) override {
        const Status status = rows_->ReadRow(row_.data());
        if (status == Status::Ok) {
            for (std::size_t at = 0; at < row_.size(); at += WideBytes, row += NarrowBytes) {
                over_(&row_[at], below_, row);
            }
        }
        return status;
    }

  private:
    std::unique_ptr<RowReader> rows_;
    void (*over_)(const std::uint8_t* pixel, const Channels& below, std::uint8_t* to);
    Channels below_;
    std::vector<std::uint8_t> row_;
};

// What both kinds have from the picture below.
class OpaquePicture : public PixelSource {
  public:
    explicit OpaquePicture(std::shared_ptr<const PixelSource> picture)
        : picture_(std::move(picture)), info_(picture_->Info()) {}

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override { return Changed(picture_->OpenRows()); }

    bool HasRowsFromBottom() const override { return picture_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        return Changed(picture_->OpenRowsFromBottom());
    }

    Status Prepare(const std::shared_ptr<RowWatch>& watch) const override { return picture_->Prepare(watch); }

  protected:
    const PictureInfo& Source() const { return picture_->Info(); }
    PictureInfo& Description() { return info_; }

  private:
    // The picture's rows as rows of this one.
    virtual Result<std::unique_ptr<RowReader>> Changed(Result<std::unique_ptr<RowReader>> rows) const = 0;

    std::shared_ptr<const PixelSource> picture_;
    PictureInfo info_;
};

class OpaquePalettePicture : public OpaquePicture {
  public:
    OpaquePalettePicture(std::shared_ptr<const PixelSource> picture, const Channels& below)
        : OpaquePicture(std::move(picture)) {
        for (Color& color : Description().palette) {
            color = Over(color, below);
        }
    }

  private:
    Result<std::unique_ptr<RowReader>> Changed(Result<std::unique_ptr<RowReader>> rows) const override { return rows; }
};

class OpaqueColorPicture : public OpaquePicture {
  public:
    // The picture's pixels are Argb32 or Pargb32.
    OpaqueColorPicture(std::shared_ptr<const PixelSource> picture, const Channels& below)
        : OpaquePicture(std::move(picture)), below_(below) {
        Description().format = PixelFormat::Rgb24;
    }

  private:
    Result<std::unique_ptr<RowReader>> Changed(Result<std::unique_ptr<RowReader>> rows) const override {
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(std::make_unique<LaidOverRows>(std::move(*rows), Source(), below_));
    }

    Channels below_;
};

} // namespace

std::shared_ptr<const PixelSource> LaidOver(std::shared_ptr<const PixelSource> picture, Color color) {
    const PictureInfo& info = picture->Info();
    const Channels below = {BlueOf(color), GreenOf(color), RedOf(color)};
    if (!MayBeTransparent(info)) {
        return picture;
    }
    if (IsIndexed(info.format)) {
        return std::make_shared<OpaquePalettePicture>(std::move(picture), below);
    }
    if (info.format != PixelFormat::Argb32 && info.format != PixelFormat::Pargb32) {
        picture = ConvertedTo(std::move(picture), PixelFormat::Argb32);
    }
    return std::make_shared<OpaqueColorPicture>(std::move(picture), below);
}

} // namespace imaginglibrary
