// Reads JPEG files.
#include "imaginglibrary/codecs/jpeg/jpegreader.h"

#include "imaginglibrary/codecs/jpeg/jpegproperties.h"
#include "imaginglibrary/codecs/jpeg/jpegstream.h"
#include "imaginglibrary/codecs/metadata/exifresolution.h"
#include "imaginglibrary/core/limits.h"

#include <cstring>
#include <optional>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr double CentimetresPerInch = 2.54;
constexpr unsigned FullSize = 8;
// The reductions that libjpeg has vector code for. The ones between cost more than the next larger of these.
constexpr unsigned ReducedSizes[] = {1, 2, 4};

constexpr std::uint32_t Reduced(std::uint32_t side, unsigned eighths) {
    return static_cast<std::uint32_t>((std::uint64_t{side} * eighths + FullSize - 1) / FullSize);
}

// Whether that much of a side is at least as long as wanted. What the last block holds beyond the picture does not
// count.
constexpr bool IsLargeEnough(std::uint32_t side, unsigned eighths, std::uint32_t wanted) {
    return std::uint64_t{side} * eighths >= std::uint64_t{wanted} * FullSize;
}

// What libjpeg shall deliver; nothing for an arrangement of components that is no picture.
std::optional<J_COLOR_SPACE> DeliveredSpace(const jpeg_decompress_struct& header) {
    switch (header.jpeg_color_space) {
    case JCS_GRAYSCALE:
        return JCS_GRAYSCALE;
    case JCS_RGB:
    case JCS_YCbCr:
        return JCS_EXT_BGR;
    case JCS_CMYK:
    case JCS_YCCK:
        return JCS_CMYK;
    default:
        return std::nullopt;
    }
}

Resolution ResolutionOf(const jpeg_decompress_struct& header) {
    constexpr int PerInch = 1;
    constexpr int PerCentimetre = 2;
    if (!header.saw_JFIF_marker || (header.density_unit != PerInch && header.density_unit != PerCentimetre)) {
        return {};
    }
    const double factor = header.density_unit == PerInch ? 1 : CentimetresPerInch;
    return {header.X_density * factor, header.Y_density * factor};
}

// The description of an open file's picture, or why there is none.
Result<PictureInfo> InfoOf(const jpeg_decompress_struct& header, unsigned eighths) {
    if (!IsAcceptableSize(header.image_width, header.image_height)) {
        return Status::InvalidParameter;
    }
    const auto space = DeliveredSpace(header);
    if (!space || header.data_precision != 8) {
        return UndecodableContent;
    }
    PictureInfo info{.width = Reduced(header.image_width, eighths),
                     .height = Reduced(header.image_height, eighths),
                     .format = PixelFormat::Rgb24,
                     .resolution = ResolutionOf(header)};
    if (*space == JCS_GRAYSCALE) {
        info.format = PixelFormat::Indexed8;
        info.palette = GreyPalette(256);
    }
    return info;
}

// Whether there may be enough in a file of this length: what is missing is shown in grey, which must not cost an hour.
bool HasEnough(const PictureInfo& info, std::uint64_t fileBytes) {
    const std::uint64_t pixels = std::uint64_t{info.width} * info.height;
    return pixels <= MaximumEmptyScreenPixels || pixels / MaximumJpegPixelsPerByte <= fileBytes;
}

// A file that is read by several pictures, and its damage.
struct JpegSource {
    std::shared_ptr<const InputFile> file;
    std::shared_ptr<FileDamage> damage;
};

class JpegRows : public RowReader {
  public:
    // `stream` is null where nothing can be decoded, and the picture is grey throughout.
    JpegRows(std::unique_ptr<JpegStream> stream, std::size_t rowBytes, std::shared_ptr<FileDamage> damage)
        : stream_(std::move(stream)), rowBytes_(rowBytes), damage_(std::move(damage)) {
        if (stream_ && stream_->Header().out_color_space == JCS_CMYK) {
            inks_.resize(std::size_t{4} * stream_->Header().output_width);
        }
    }

    Status ReadRow(std::uint8_t* row) override {
        if (stream_) {
            const Status status = stream_->ReadRow(inks_.empty() ? row : inks_.data());
            if (status == Status::Ok && !inks_.empty()) {
                MixInks(row);
            }
            if (status == Status::Ok || !stream_->AreDataBroken()) {
                return status;
            }
            stream_.reset();
            if (damage_->Meet() != Status::Ok) {
                return UndecodableContent;
            }
        }
        std::memset(row, Grey, rowBytes_);
        return Status::Ok;
    }

  private:
    static constexpr std::uint8_t Grey = 128; // also the index of that grey

    // Files with an Adobe marker store how much paper is left bare, all others how much ink there is.
    void MixInks(std::uint8_t* row) const {
        const unsigned flip = stream_->Header().saw_Adobe_marker ? 0 : 255;
        const bool mayHaveGaps = damage_->IsMet();
        const std::uint8_t* ink = inks_.data();
        for (JDIMENSION x = 0; x < stream_->Header().output_width; ++x, ink += 4, row += 3) {
            if (mayHaveGaps && IsGap(ink)) {
                std::memset(row, Grey, 3);
                continue;
            }
            const unsigned black = ink[3] ^ flip;
            for (int i = 0; i < 3; ++i) {
                row[i] = static_cast<std::uint8_t>(((ink[2 - i] ^ flip) * black + 127) / 255);
            }
        }
    }

    // Where data are missing libjpeg leaves the middle of each ink's scale, which would be a dark grey.
    static bool IsGap(const std::uint8_t* ink) {
        const bool isEven = ink[0] == ink[1] && ink[1] == ink[2];
        return isEven && ink[3] == 128 && (ink[0] == 127 || ink[0] == 128);
    }

    std::unique_ptr<JpegStream> stream_;
    std::size_t rowBytes_;
    std::shared_ptr<FileDamage> damage_;
    std::vector<std::uint8_t> inks_; // cyan, magenta, yellow, black of each pixel; empty for other pictures
};

class JpegPicture : public Decoder {
  public:
    JpegPicture(JpegSource source, PictureInfo info, unsigned eighths, PropertyList properties)
        : source_(std::move(source)), info_(std::move(info)), eighths_(eighths) {
        properties_ = std::move(properties);
    }

    const PictureInfo& Info() const override { return info_; }

    std::shared_ptr<FileDamage> Damage() const override { return source_.damage; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto stream = StartStream();
        if (!stream.Ok()) {
            return stream.GetStatus();
        }
        return std::unique_ptr<RowReader>(
            std::make_unique<JpegRows>(std::move(*stream), BytesPerRow(info_.format, info_.width), source_.damage));
    }

    std::optional<ScaledPicture> ReducedTo(std::uint32_t width, std::uint32_t height) const override {
        if (eighths_ != FullSize) {
            return std::nullopt;
        }
        for (const unsigned eighths : ReducedSizes) {
            if (IsLargeEnough(info_.width, eighths, width) && IsLargeEnough(info_.height, eighths, height)) {
                PictureInfo info = info_;
                info.width = Reduced(info_.width, eighths);
                info.height = Reduced(info_.height, eighths);
                return ScaledPicture{std::make_unique<JpegPicture>(source_, std::move(info), eighths, properties_),
                                     static_cast<double>(eighths) / FullSize};
            }
        }
        return std::nullopt;
    }

  private:
    // Where a broken marker between the scans stops libjpeg, the file is read anew up to there, which shows all scans
    // before it. Null where that fails too.
    Result<std::unique_ptr<JpegStream>> StartStream() const {
        std::uint64_t end = JpegStream::WholeFile;
        for (int attempt = 0; attempt < 2; ++attempt) {
            auto stream = OpenStream(end);
            if (!stream.Ok()) {
                return stream.GetStatus();
            }
            const Status status = (*stream)->Start(*DeliveredSpace((*stream)->Header()), eighths_, source_.damage);
            if (status == Status::Ok) {
                return HasExpectedSize((*stream)->Header()) ? std::move(stream) : UndecodableContent;
            }
            if (!(*stream)->AreDataBroken() || source_.damage->Meet() != Status::Ok) {
                return status;
            }
            end = (*stream)->SoundBytes();
        }
        return std::unique_ptr<JpegStream>();
    }

    Result<std::unique_ptr<JpegStream>> OpenStream(std::uint64_t end) const {
        auto stream = JpegStream::Open(source_.file, JpegMarkers::PassOver, end);
        if (!stream.Ok()) {
            return stream;
        }
        // The file may have been changed under us, and rows must fit the caller's buffer whatever it says now.
        const auto now = InfoOf((*stream)->Header(), eighths_);
        if (!now.Ok() || now->width != info_.width || now->height != info_.height || now->format != info_.format) {
            return UndecodableContent;
        }
        return stream;
    }

    bool HasExpectedSize(const jpeg_decompress_struct& header) const {
        return header.output_width == info_.width && header.output_height == info_.height;
    }

    JpegSource source_;
    PictureInfo info_;
    unsigned eighths_; // how many of eight parts of the full size its rows have
};

} // namespace

Result<std::unique_ptr<Decoder>> OpenJpeg(std::shared_ptr<const InputFile> file) {
    auto stream = JpegStream::Open(file, JpegMarkers::Keep);
    if (!stream.Ok()) {
        return stream.GetStatus();
    }
    auto info = InfoOf((*stream)->Header(), FullSize);
    if (!info.Ok()) {
        return info.GetStatus();
    }
    if (!HasEnough(*info, file->Size())) {
        return Status::InvalidParameter;
    }
    auto properties = ReadJpegProperties((*stream)->Header(), (*stream)->ColorProfile());
    info->resolution = ResolutionOr(info->resolution, properties);
    return std::unique_ptr<Decoder>(
        std::make_unique<JpegPicture>(JpegSource{std::move(file), std::make_shared<FileDamage>()}, std::move(*info),
                                      FullSize, std::move(properties)));
}

} // namespace imaginglibrary
