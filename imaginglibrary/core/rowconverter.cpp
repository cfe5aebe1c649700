// Turns rows of any pixel format into the true-colour form that an encoder or an operation works on.
#include "imaginglibrary/core/rowconverter.h"

#include "imaginglibrary/core/packing.h"

#include <cassert>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

struct Pixel {
    std::uint8_t blue, green, red, alpha;
};

constexpr std::uint8_t DivideBy255(unsigned value) { return static_cast<std::uint8_t>((value + 127) / 255); }

constexpr std::uint8_t Widen5(unsigned value) { return static_cast<std::uint8_t>((value << 3) | (value >> 2)); }
constexpr std::uint8_t Widen6(unsigned value) { return static_cast<std::uint8_t>((value << 2) | (value >> 4)); }

constexpr std::uint8_t Narrow16(unsigned value) { return static_cast<std::uint8_t>((value * 255 + 32767) / 65535); }

std::uint8_t Unpremultiply(std::uint8_t channel, std::uint8_t alpha) {
    if (alpha == 0) {
        return 0;
    }
    const unsigned value = (channel * 255u + alpha / 2) / alpha;
    return static_cast<std::uint8_t>(value > 255 ? 255 : value);
}

Pixel FromColor(Color color) { return {BlueOf(color), GreenOf(color), RedOf(color), AlphaOf(color)}; }

Pixel OverWhite(Pixel pixel) {
    const auto blend = [&](std::uint8_t channel) {
        return DivideBy255(channel * pixel.alpha + 255u * (255 - pixel.alpha));
    };
    return {blend(pixel.blue), blend(pixel.green), blend(pixel.red), 255};
}

Pixel Premultiplied(Pixel pixel) {
    const auto scale = [&](std::uint8_t channel) { return DivideBy255(unsigned{channel} * pixel.alpha); };
    return {scale(pixel.blue), scale(pixel.green), scale(pixel.red), pixel.alpha};
}

std::uint16_t Load16(const std::uint8_t* bytes) {
    std::uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// One pixel, not premultiplied, at position x of a row in each format.
template <PixelFormat Format> Pixel PixelAt(const std::uint8_t* row, std::size_t x, const Palette& palette) {
    if constexpr (Format == PixelFormat::Indexed1) {
        return FromColor(palette[PackedAt(row, x, 1)]);
    } else if constexpr (Format == PixelFormat::Indexed4) {
        return FromColor(palette[PackedAt(row, x, 4)]);
    } else if constexpr (Format == PixelFormat::Indexed8) {
        return FromColor(palette[row[x]]);
    } else if constexpr (Format == PixelFormat::Rgb555 || Format == PixelFormat::Argb1555) {
        const unsigned value = Load16(row + 2 * x);
        const bool opaque = Format == PixelFormat::Rgb555 || (value & 0x8000) != 0;
        return {Widen5(value & 31), Widen5((value >> 5) & 31), Widen5((value >> 10) & 31),
                static_cast<std::uint8_t>(opaque ? 255 : 0)};
    } else if constexpr (Format == PixelFormat::Rgb565) {
        const unsigned value = Load16(row + 2 * x);
        return {Widen5(value & 31), Widen6((value >> 5) & 63), Widen5(value >> 11), 255};
    } else if constexpr (Format == PixelFormat::Rgb24) {
        return {row[3 * x], row[3 * x + 1], row[3 * x + 2], 255};
    } else if constexpr (Format == PixelFormat::Rgb32) {
        return {row[4 * x], row[4 * x + 1], row[4 * x + 2], 255};
    } else if constexpr (Format == PixelFormat::Argb32) {
        return {row[4 * x], row[4 * x + 1], row[4 * x + 2], row[4 * x + 3]};
    } else if constexpr (Format == PixelFormat::Pargb32) {
        const std::uint8_t alpha = row[4 * x + 3];
        return {Unpremultiply(row[4 * x], alpha), Unpremultiply(row[4 * x + 1], alpha),
                Unpremultiply(row[4 * x + 2], alpha), alpha};
    } else {
        static_assert(Format == PixelFormat::Rgb48);
        return {Narrow16(Load16(row + 6 * x)), Narrow16(Load16(row + 6 * x + 2)), Narrow16(Load16(row + 6 * x + 4)),
                255};
    }
}

// Four bytes at a time where a pixel has three, but for the last one, behind which there may be nothing to read.
void WidenOpaqueRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t width) {
    constexpr std::size_t Narrow = 3, Wide = 4;
    for (std::uint32_t x = 0; x < width; ++x, from += Narrow, to += Wide) {
        std::memcpy(to, from, x + 1 < width ? Wide : Narrow);
        to[3] = 255;
    }
}

template <PixelFormat From, PixelFormat To>
void ConvertRow(const std::uint8_t* from, std::uint8_t* to, std::uint32_t width, const Palette& palette) {
    if constexpr (From == To && From != PixelFormat::Rgb32) {
        std::memcpy(to, from, BytesPerRow(From, width));
        return;
    }
    if constexpr (From == PixelFormat::Rgb24 && BitsPerPixel(To) == 32) {
        WidenOpaqueRow(from, to, width);
        return;
    }
    for (std::size_t x = 0; x < width; ++x) {
        Pixel pixel = PixelAt<From>(from, x, palette);
        if constexpr (To == PixelFormat::Pargb32) {
            pixel = Premultiplied(pixel);
        } else if constexpr (To != PixelFormat::Argb32) {
            if (pixel.alpha != 255) {
                pixel = OverWhite(pixel);
            }
        }
        constexpr std::size_t bytes = BitsPerPixel(To) / 8;
        std::memcpy(to + bytes * x, &pixel, bytes);
    }
}

template <PixelFormat To> void ConvertRowTo(PixelFormat from, const std::uint8_t* source, std::uint8_t* target,
                                            std::uint32_t width, const Palette& palette) {
    switch (from) {
    case PixelFormat::Indexed1:
        return ConvertRow<PixelFormat::Indexed1, To>(source, target, width, palette);
    case PixelFormat::Indexed4:
        return ConvertRow<PixelFormat::Indexed4, To>(source, target, width, palette);
    case PixelFormat::Indexed8:
        return ConvertRow<PixelFormat::Indexed8, To>(source, target, width, palette);
    case PixelFormat::Rgb555:
        return ConvertRow<PixelFormat::Rgb555, To>(source, target, width, palette);
    case PixelFormat::Rgb565:
        return ConvertRow<PixelFormat::Rgb565, To>(source, target, width, palette);
    case PixelFormat::Argb1555:
        return ConvertRow<PixelFormat::Argb1555, To>(source, target, width, palette);
    case PixelFormat::Rgb24:
        return ConvertRow<PixelFormat::Rgb24, To>(source, target, width, palette);
    case PixelFormat::Rgb32:
        return ConvertRow<PixelFormat::Rgb32, To>(source, target, width, palette);
    case PixelFormat::Argb32:
        return ConvertRow<PixelFormat::Argb32, To>(source, target, width, palette);
    case PixelFormat::Pargb32:
        return ConvertRow<PixelFormat::Pargb32, To>(source, target, width, palette);
    case PixelFormat::Rgb48:
        return ConvertRow<PixelFormat::Rgb48, To>(source, target, width, palette);
    case PixelFormat::Undefined:
        break;
    }
    assert(false);
}

class ConvertedRows : public RowReader {
  public:
    ConvertedRows(std::unique_ptr<RowReader> rows, const RowConverter& converter, std::size_t rowBytes)
        : rows_(std::move(rows)), converter_(converter), row_(rowBytes) {}

    Status ReadRow(std::uint8_t* row) override {
        const Status status = rows_->ReadRow(row_.data());
        if (status == Status::Ok) {
            converter_.Convert(row_.data(), row);
        }
        return status;
    }

  private:
    std::unique_ptr<RowReader> rows_;
    RowConverter converter_;
    std::vector<std::uint8_t> row_;
};

Result<std::unique_ptr<RowReader>> ConvertedReader(Result<std::unique_ptr<RowReader>> rows, const PictureInfo& from,
                                                   PixelFormat target) {
    if (!rows.Ok()) {
        return rows.GetStatus();
    }
    return std::unique_ptr<RowReader>(std::make_unique<ConvertedRows>(std::move(*rows), RowConverter(from, target),
                                                                      BytesPerRow(from.format, from.width)));
}

class ConvertedPicture : public PixelSource {
  public:
    ConvertedPicture(std::shared_ptr<const PixelSource> picture, PixelFormat target)
        : picture_(std::move(picture)), info_(picture_->Info()) {
        info_.format = target;
        info_.palette.clear();
    }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override { return OpenRowsAs(*picture_, info_.format); }

    bool HasRowsFromBottom() const override { return picture_->HasRowsFromBottom(); }

    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override {
        return ConvertedReader(picture_->OpenRowsFromBottom(), picture_->Info(), info_.format);
    }

    Status Prepare(const std::shared_ptr<RowWatch>& watch) const override { return picture_->Prepare(watch); }

  private:
    std::shared_ptr<const PixelSource> picture_;
    PictureInfo info_;
};

} // namespace

RowConverter::RowConverter(const PictureInfo& source, PixelFormat target)
    : width_(source.width), from_(source.format), to_(target), palette_(source.palette) {
    if (IsIndexed(from_)) {
        palette_.resize(std::size_t{1} << BitsPerPixel(from_), MakeColor(0, 0, 0));
    }
}

void RowConverter::Convert(const std::uint8_t* from, std::uint8_t* to) const {
    switch (to_) {
    case PixelFormat::Rgb24:
        return ConvertRowTo<PixelFormat::Rgb24>(from_, from, to, width_, palette_);
    case PixelFormat::Rgb32:
        return ConvertRowTo<PixelFormat::Rgb32>(from_, from, to, width_, palette_);
    case PixelFormat::Argb32:
        return ConvertRowTo<PixelFormat::Argb32>(from_, from, to, width_, palette_);
    case PixelFormat::Pargb32:
        return ConvertRowTo<PixelFormat::Pargb32>(from_, from, to, width_, palette_);
    default:
        assert(false);
    }
}

Result<std::unique_ptr<RowReader>> OpenRowsAs(const PixelSource& picture, PixelFormat target) {
    return ConvertedReader(picture.OpenRows(), picture.Info(), target);
}

std::unique_ptr<PixelSource> ConvertedTo(std::shared_ptr<const PixelSource> picture, PixelFormat target) {
    return std::make_unique<ConvertedPicture>(std::move(picture), target);
}

bool MayBeTransparent(const PictureInfo& picture) {
    return HasAlpha(picture.format) || HasTransparency(picture.palette);
}

} // namespace imaginglibrary
