// Writes PNG files.
#include "imaginglibrary/codecs/png/pngwriter.h"

#include "imaginglibrary/codecs/metadata/colorprofile.h"
#include "imaginglibrary/codecs/png/pngerrors.h"
#include "imaginglibrary/codecs/png/pngimagedata.h"
#include "imaginglibrary/codecs/png/pngpalette.h"
#include "imaginglibrary/codecs/png/pngproperties.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <optional>
#include <span>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr int TextCompressionLevel = 6; // of a profile
constexpr png_fixed_point ScreenGamma = 45455;
constexpr double InchesPerMetre = 1 / 0.0254;

PixelFormat WrittenFormat(const PictureInfo& info) {
    if (IsIndexed(info.format)) {
        return info.format;
    }
    return HasAlpha(info.format) ? PixelFormat::Argb32 : PixelFormat::Rgb24;
}

png_uint_32 DotsPerMetre(double dotsPerInch) {
    const double dots = std::round(DotsPerInchOrAssumed(dotsPerInch) * InchesPerMetre);
    return static_cast<png_uint_32>(std::clamp(dots, 1.0, double{PNG_UINT_31_MAX}));
}

// One libpng writer; Begin once, then WriteRow for every row, then End.
class PngWriter {
  public:
    PngWriter(const PictureInfo& info, const Palette& palette, const PropertyList& properties, OutputFile& file)
        : info_(info), format_(WrittenFormat(info)), palette_(palette), metadata_(MakePngMetadata(properties)),
          profile_(RgbProfileOf(properties)), file_(file) {
        for (std::size_t i = 0; i < palette_.size(); ++i) {
            colors_[i] = {RedOf(palette_[i]), GreenOf(palette_[i]), BlueOf(palette_[i])};
            alphas_[i] = AlphaOf(palette_[i]);
        }
        for (PngText& text : metadata_.texts) {
            texts_.push_back(TextChunkOf(text));
        }
    }

    ~PngWriter() {
        png_destroy_info_struct(png_, &trial_);
        png_destroy_write_struct(&png_, &header_);
    }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    Status Begin() {
        return exit_.Run([this] {
            png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &exit_, LeaveOnPngError, LeaveOnPngMemoryWarning);
            if (png_ != nullptr) {
                header_ = png_create_info_struct(png_);
            }
            if (header_ == nullptr) {
                exit_.Leave(Status::OutOfMemory);
            }
            png_set_write_fn(png_, this, WriteBytes, nullptr);
            DescribePicture();
            AddMetadata();
            png_write_info(png_, header_);
        });
    }

    // The image data are our own work, so libpng only frames them.
    Status WriteImageData(std::span<const std::uint8_t> data) { return WriteChunk("IDAT", data); }
    Status End() { return WriteChunk("IEND", {}); }

  private:
    Status WriteChunk(const char* name, std::span<const std::uint8_t> content) {
        return exit_.Run([this, name, content] {
            png_write_chunk(png_, reinterpret_cast<png_const_bytep>(name), content.data(), content.size());
        });
    }

    // libpng does not write to what it is given, for all that its types say.
    static png_text TextChunkOf(PngText& text) {
        png_text chunk{};
        chunk.compression = text.isUtf8 ? PNG_ITXT_COMPRESSION_NONE : PNG_TEXT_COMPRESSION_NONE;
        chunk.key = const_cast<char*>(text.keyword);
        chunk.text = text.text.data();
        chunk.text_length = text.text.size();
        return chunk;
    }

    static void WriteBytes(png_structp png, png_bytep bytes, png_size_t count) {
        auto* writer = static_cast<PngWriter*>(png_get_io_ptr(png));
        if (const Status status = writer->Append(bytes, count); status != Status::Ok) {
            writer->exit_.Leave(status);
        }
    }

    Status Append(const std::uint8_t* bytes, std::size_t count) noexcept {
        try {
            return file_.Append(bytes, count);
        } catch (const std::bad_alloc&) {
            return Status::OutOfMemory;
        }
    }

    void DescribePicture() {
        const bool indexed = IsIndexed(format_);
        const int colorType = indexed                          ? PNG_COLOR_TYPE_PALETTE
                              : format_ == PixelFormat::Argb32 ? PNG_COLOR_TYPE_RGB_ALPHA
                                                               : PNG_COLOR_TYPE_RGB;
        png_set_IHDR(png_, header_, info_.width, info_.height, indexed ? static_cast<int>(BitsPerPixel(format_)) : 8,
                     colorType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        DescribeColors();
        png_set_pHYs(png_, header_, DotsPerMetre(info_.resolution.horizontal), DotsPerMetre(info_.resolution.vertical),
                     PNG_RESOLUTION_METER);
        png_set_text_compression_level(png_, TextCompressionLevel);
        if (indexed) {
            png_set_PLTE(png_, header_, colors_.data(), static_cast<int>(palette_.size()));
            if (HasTransparency(palette_)) {
                png_set_tRNS(png_, header_, alphas_.data(), static_cast<int>(palette_.size()), nullptr);
            }
        }
    }

    void DescribeColors() {
        if (IsProfileValid()) {
            SetProfile(header_);
        } else {
            png_set_sRGB(png_, header_, PNG_sRGB_INTENT_PERCEPTUAL);
            png_set_gAMA_fixed(png_, header_, ScreenGamma);
        }
    }

    // libpng takes no other colours once it has refused a profile, so it is asked with another header first.
    bool IsProfileValid() {
        if (profile_.empty()) {
            return false;
        }
        trial_ = png_create_info_struct(png_);
        if (trial_ == nullptr) {
            exit_.Leave(Status::OutOfMemory);
        }
        png_set_benign_errors(png_, 1);
        png_set_IHDR(png_, trial_, 1, 1, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
                     PNG_FILTER_TYPE_BASE);
        SetProfile(trial_);
        return png_get_valid(png_, trial_, PNG_INFO_iCCP) != 0;
    }

    void SetProfile(png_infop header) {
        png_set_iCCP(png_, header, "ICC profile", PNG_COMPRESSION_TYPE_BASE, profile_.data(),
                     static_cast<png_uint_32>(profile_.size()));
    }

    void AddMetadata() {
        if (!texts_.empty()) {
            png_set_text(png_, header_, texts_.data(), static_cast<int>(texts_.size()));
        }
        if (!metadata_.exif.empty()) {
            png_set_eXIf_1(png_, header_, static_cast<png_uint_32>(metadata_.exif.size()), metadata_.exif.data());
        }
    }

    const PictureInfo& info_;
    PixelFormat format_;
    Palette palette_;
    PngMetadata metadata_;
    std::vector<png_text> texts_;
    std::span<const std::uint8_t> profile_;
    std::array<png_color, 256> colors_{};
    std::array<png_byte, 256> alphas_{};
    OutputFile& file_;
    LibraryExit exit_;
    png_structp png_ = nullptr;
    png_infop header_ = nullptr;
    png_infop trial_ = nullptr;
};

// Nothing for what suits the picture.
std::optional<Effort> EffortFor(Compression compression) {
    switch (compression) {
    case Compression::Quick:
        return Effort::Quick;
    case Compression::Small:
        return Effort::Utmost;
    default:
        return std::nullopt;
    }
}

PngRowForm RowFormOf(PixelFormat format, std::uint32_t width) {
    return {.rowBytes = BytesPerRow(format, width),
            .pixelBytes = std::max<std::size_t>(BitsPerPixel(format) / 8, 1),
            .isIndexed = IsIndexed(format)};
}

// From our order of colours, blue first, to that of the file.
void PutRow(const std::uint8_t* row, const PngRowForm& form, std::uint8_t* to) {
    std::copy_n(row, form.rowBytes, to);
    if (!form.isIndexed) {
        for (std::size_t i = 0; i < form.rowBytes; i += form.pixelBytes) {
            std::swap(to[i], to[i + 2]);
        }
    }
}

} // namespace

Status WritePng(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                OutputFile& file) {
    const PictureInfo& info = picture.Info();
    const PixelFormat format = WrittenFormat(info);
    std::optional<PngPalette> palette;
    if (IsIndexed(format)) {
        palette.emplace(info);
    }
    PngWriter writer(info, palette ? palette->Entries() : Palette(), properties, file);
    if (const Status status = writer.Begin(); status != Status::Ok) {
        return status;
    }
    const PngRowForm form = RowFormOf(format, info.width);
    PngImageData data(form, info.height, EffortFor(options.compression),
                      [&](std::span<const std::uint8_t> chunk) { return writer.WriteImageData(chunk); });
    const Status status =
        ForEachRow(palette ? picture.OpenRows() : OpenRowsAs(picture, format), BytesPerRow(format, info.width),
                   info.height, [&](std::uint32_t, std::uint8_t* row) {
                       if (palette) {
                           palette->Correct(row);
                       }
                       PutRow(row, form, data.NextRow());
                       return data.EndRow();
                   });
    if (status != Status::Ok) {
        return status;
    }
    return writer.End();
}

} // namespace imaginglibrary
