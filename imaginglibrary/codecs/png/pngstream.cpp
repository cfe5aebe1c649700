// One pass of libpng over a PNG file.
#include "imaginglibrary/codecs/png/pngstream.h"

#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace imaginglibrary {

namespace {

constexpr double MetresPerInch = 0.0254;

} // namespace

void LeaveOnPngError(png_structp png, png_const_charp /*message*/) {
    static_cast<LibraryExit*>(png_get_error_ptr(png))->Leave(UndecodableContent);
}

// libpng goes on without what it had no memory for, which would be lost without a word.
void LeaveOnPngMemoryWarning(png_structp png, png_const_charp message) {
    auto* const exit = static_cast<LibraryExit*>(png_get_error_ptr(png));
    const bool isShort = std::strstr(message, "nsufficient memory") != nullptr || // with a small or a capital letter
                         std::strstr(message, "ut of memory") != nullptr;
    if (isShort) {
        exit->Leave(Status::OutOfMemory);
    }
}

PngStream::PngStream(std::shared_ptr<const InputFile> file) : bytes_(std::move(file)) {}

PngStream::~PngStream() { png_destroy_read_struct(&png_, &header_, nullptr); }

void PngStream::ReadBytes(png_structp png, png_bytep to, png_size_t count) {
    auto* stream = static_cast<PngStream*>(png_get_io_ptr(png));
    if (stream->bytes_.Read(to, count) != count) {
        stream->exit_.Leave(stream->bytes_.WhyNoMore());
    }
}

// libpng passes a chunk on in spite of its checksum, but warns before.
void PngStream::NoteWarning(png_structp png, png_const_charp message) {
    auto* stream = static_cast<PngStream*>(png_get_io_ptr(png));
    if (stream != nullptr && std::strstr(message, "CRC error") != nullptr) {
        stream->isChecksumWrong_ = true;
    }
    LeaveOnPngMemoryWarning(png, message);
}

int PngStream::PassChunk(png_structp png, png_unknown_chunkp chunk) {
    constexpr int IsAnError = -1;
    constexpr int IsDone = 1;
    constexpr png_byte AncillaryBit = 0x20;
    if ((chunk->name[0] & AncillaryBit) == 0) {
        return IsAnError;
    }
    auto* stream = static_cast<PngStream*>(png_get_user_chunk_ptr(png));
    if (++stream->chunksPassed_ > MaximumPngChunks) {
        return IsAnError;
    }
    if (!std::exchange(stream->isChecksumWrong_, false)) {
        constexpr std::size_t NameBytes = 4;
        stream->chunks_->ReadChunk({reinterpret_cast<const char*>(chunk->name), NameBytes}, {chunk->data, chunk->size});
    }
    return IsDone;
}

// A text may be short in the file and fill the memory, so libpng is to make nothing of metadata.
void PngStream::PassOverMetadata(PngChunkReader* chunks) {
    png_set_chunk_malloc_max(png_, MaximumMetadataBytes);
    constexpr int AllButPixels = -1;
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, AllButPixels);
    constexpr png_byte Resolution[] = "pHYs";
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_AS_DEFAULT, Resolution, 1);
    chunks_ = chunks;
    if (chunks != nullptr) {
        png_set_read_user_chunk_fn(png_, this, PassChunk);
    }
}

Result<std::unique_ptr<PngStream>> PngStream::Open(std::shared_ptr<const InputFile> file, PngChunkReader* chunks) {
    std::unique_ptr<PngStream> stream(new PngStream(std::move(file)));
    PngStream* self = stream.get();
    const Status status = self->exit_.Run([self, chunks] {
        self->png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &self->exit_, LeaveOnPngError, NoteWarning);
        if (self->png_ != nullptr) {
            self->header_ = png_create_info_struct(self->png_);
        }
        if (self->header_ == nullptr) {
            self->exit_.Leave(Status::OutOfMemory);
        }
        png_set_read_fn(self->png_, self, ReadBytes);
        // The size is judged by ourselves, for a status of its own.
        png_set_user_limits(self->png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        self->PassOverMetadata(chunks);
        png_set_benign_errors(self->png_, 1);
        png_read_info(self->png_, self->header_);
    });
    stream->chunks_ = nullptr;
    if (status != Status::Ok) {
        return status;
    }
    if (!IsAcceptableSize(png_get_image_width(self->png_, self->header_),
                          png_get_image_height(self->png_, self->header_))) {
        return Status::InvalidParameter;
    }
    return stream;
}

bool PngStream::HasTransparencyChunk() const { return png_get_valid(png_, header_, PNG_INFO_tRNS) != 0; }

PixelFormat PngStream::Format() const {
    const int depth = png_get_bit_depth(png_, header_);
    if (HasTransparencyChunk()) {
        return PixelFormat::Argb32;
    }
    switch (png_get_color_type(png_, header_)) {
    case PNG_COLOR_TYPE_GRAY:
        return depth == 1 ? PixelFormat::Indexed1 : PixelFormat::Argb32;
    case PNG_COLOR_TYPE_RGB:
        return depth == 8 ? PixelFormat::Rgb24 : PixelFormat::Argb32;
    case PNG_COLOR_TYPE_PALETTE:
        return depth == 1   ? PixelFormat::Indexed1
               : depth == 4 ? PixelFormat::Indexed4
               : depth == 8 ? PixelFormat::Indexed8
                            : PixelFormat::Argb32;
    default:
        return PixelFormat::Argb32;
    }
}

Palette PngStream::ReadPalette() const {
    if (png_get_color_type(png_, header_) != PNG_COLOR_TYPE_PALETTE) {
        return GreyPalette(2);
    }
    png_colorp entries = nullptr;
    int count = 0;
    png_get_PLTE(png_, header_, &entries, &count);
    Palette palette;
    for (int i = 0; i < count; ++i) {
        palette.push_back(MakeColor(entries[i].red, entries[i].green, entries[i].blue));
    }
    return palette;
}

std::optional<PngStream::DotsPerUnit> PngStream::Dots() const {
    png_uint_32 horizontal = 0;
    png_uint_32 vertical = 0;
    int unit = PNG_RESOLUTION_UNKNOWN;
    if (png_get_pHYs(png_, header_, &horizontal, &vertical, &unit) == 0) {
        return std::nullopt;
    }
    return DotsPerUnit{horizontal, vertical, static_cast<std::uint8_t>(unit)};
}

PictureInfo PngStream::Info() const {
    PictureInfo info{
        .width = png_get_image_width(png_, header_), .height = png_get_image_height(png_, header_), .format = Format()};
    if (IsIndexed(info.format)) {
        info.palette = ReadPalette();
    }
    if (const auto dots = Dots(); dots && dots->unit == PNG_RESOLUTION_METER) {
        info.resolution = {dots->horizontal * MetresPerInch, dots->vertical * MetresPerInch};
    }
    return info;
}

PngLayout PngStream::Layout() const {
    PngLayout layout{.width = png_get_image_width(png_, header_),
                     .height = png_get_image_height(png_, header_),
                     .colorType = png_get_color_type(png_, header_),
                     .depth = png_get_bit_depth(png_, header_),
                     .format = Format()};
    png_bytep alphas = nullptr;
    int alphaCount = 0;
    png_color_16p clear = nullptr;
    const bool hasTransparency = png_get_tRNS(png_, header_, &alphas, &alphaCount, &clear) != 0;
    if (layout.colorType == PNG_COLOR_TYPE_PALETTE) {
        layout.palette = ReadPalette();
        for (std::size_t i = 0; i < std::min(layout.palette.size(), static_cast<std::size_t>(alphaCount)); ++i) {
            layout.palette[i] = (layout.palette[i] & 0xFFFFFF) | Color{alphas[i]} << 24;
        }
    } else if (hasTransparency) {
        const bool isGrey = layout.colorType == PNG_COLOR_TYPE_GRAY;
        layout.clear = {isGrey ? clear->gray : clear->red, clear->green, clear->blue};
    }
    return layout;
}

// libpng has read the chunk's length and name.
std::uint64_t PngStream::ImageDataOffset() const { return bytes_.Position() - 8; }

Result<int> PngStream::Start() {
    int passes = 1;
    int* const found = &passes;
    const PixelFormat format = Format();
    const Status status = exit_.Run([this, format, found] {
        if (format == PixelFormat::Argb32) {
            png_set_expand(png_);
            png_set_scale_16(png_);
            png_set_gray_to_rgb(png_);
            png_set_add_alpha(png_, 255, PNG_FILLER_AFTER);
        }
        if (!IsIndexed(format)) {
            png_set_bgr(png_);
        }
        *found = png_set_interlace_handling(png_);
        png_read_update_info(png_, header_);
        if (png_get_rowbytes(png_, header_) != BytesPerRow(format, png_get_image_width(png_, header_))) {
            exit_.Leave(UndecodableContent);
        }
    });
    if (status != Status::Ok) {
        return status;
    }
    return passes;
}

Status PngStream::ReadRow(std::uint8_t* row) {
    return exit_.Run([this, row] { png_read_row(png_, row, nullptr); });
}

} // namespace imaginglibrary
