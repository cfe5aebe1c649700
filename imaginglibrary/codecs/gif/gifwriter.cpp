// Writes GIF files.
#include "imaginglibrary/codecs/gif/gifwriter.h"

#include "imaginglibrary/codecs/gif/gifcompressor.h"
#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/packing.h"
#include "imaginglibrary/core/rowpipe.h"
#include "imaginglibrary/operations/quantizer.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr int BitsOfPrimary = 8;

bool IsHalfTransparent(Color color) { return AlphaOf(color) != 0 && AlphaOf(color) != 255; }

bool IsClear(Color color) { return AlphaOf(color) == 0; }

// Calls `use` with the indices of each row from the top, a byte each, until it or the picture fails.
template <class Use> Status ForIndicesOfEachRow(const PixelSource& picture, Use use) {
    const PictureInfo& info = picture.Info();
    const unsigned bits = BitsPerPixel(info.format);
    std::vector<std::uint8_t> unpacked(bits < 8 ? info.width : 0);
    return PipeRows(picture.OpenRows(), BytesPerRow(info.format, info.width), info.height,
                    [&](std::uint32_t, std::uint8_t* row) {
                        if (bits < 8) {
                            UnpackPixels(row, 0, bits, unpacked.data(), unpacked.size());
                        }
                        return use(std::span(bits < 8 ? unpacked.data() : row, info.width));
                    });
}

// How many entries the indices in use need. The pixels are looked at only where the palette leaves a doubt.
Result<std::size_t> EntriesInUse(const PixelSource& picture) {
    const PictureInfo& info = picture.Info();
    std::size_t entries = info.palette.size();
    if (entries == std::size_t{1} << BitsPerPixel(info.format)) {
        return entries;
    }
    const Status status = ForIndicesOfEachRow(picture, [&](std::span<const std::uint8_t> indices) {
        entries = std::max<std::size_t>(entries, *std::max_element(indices.begin(), indices.end()) + 1u);
        return Status::Ok;
    });
    if (status != Status::Ok) {
        return status;
    }
    return entries;
}

// giflib's file handle over an OutputFile.
class GifOutput {
  public:
    explicit GifOutput(OutputFile& file) : file_(file), gif_(EGifOpen(this, &GifOutput::WriteBytes, nullptr)) {}

    GifFileType* Get() const { return gif_.get(); }

    // Writes the trailer. The status of everything so far.
    Status Close() {
        const bool closed = EGifCloseFile(gif_.release(), nullptr) == GIF_OK;
        return closed ? status_ : Failure();
    }

    // Why a call to giflib failed: what the file says, if it was the file, else memory.
    Status Failure() const { return status_ != Status::Ok ? status_ : Status::OutOfMemory; }

  private:
    struct Closer {
        void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
    };

    // An exception must not travel through the C library.
    static int WriteBytes(GifFileType* gif, const GifByteType* bytes, int count) noexcept {
        auto& output = *static_cast<GifOutput*>(gif->UserData);
        try {
            if (output.status_ == Status::Ok) { // giflib goes on behind some failures
                output.status_ = output.file_.Append(bytes, static_cast<std::size_t>(count));
            }
        } catch (...) {
            output.status_ = Status::OutOfMemory;
        }
        return output.status_ == Status::Ok ? count : 0;
    }

    OutputFile& file_;
    Status status_ = Status::Ok;
    std::unique_ptr<GifFileType, Closer> gif_;
};

struct ColorMapCloser {
    void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};

// The table's length is a power of two; entries beyond the palette are black, as everywhere.
std::unique_ptr<ColorMapObject, ColorMapCloser> MakeTable(const Palette& palette, std::size_t entries) {
    std::array<GifColorType, 256> colors{};
    for (std::size_t i = 0; i < palette.size(); ++i) {
        colors[i] = {RedOf(palette[i]), GreenOf(palette[i]), BlueOf(palette[i])};
    }
    const std::size_t length = std::bit_ceil(std::max<std::size_t>(entries, 2));
    return std::unique_ptr<ColorMapObject, ColorMapCloser>(GifMakeMapObject(static_cast<int>(length), colors.data()));
}

bool PutTransparentIndex(GifFileType* gif, int index) {
    const GraphicsControlBlock control{
        .DisposalMode = DISPOSAL_UNSPECIFIED, .UserInputFlag = false, .DelayTime = 0, .TransparentColor = index};
    std::array<GifByteType, 4> bytes;
    EGifGCBToExtension(&control, bytes.data());
    return EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, bytes.size(), bytes.data()) == GIF_OK;
}

// Its bytes stand for lengths of blocks too, so they are cut where a reader of blocks cuts them. `content` leads such a
// reader to its end.
bool PutXmp(GifFileType* gif, const std::string& content) {
    bool isPut = EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE) == GIF_OK &&
                 EGifPutExtensionBlock(gif, GifXmpApplication.size(), GifXmpApplication.data()) == GIF_OK;
    for (std::size_t at = 0; isPut && at < content.size();) {
        const int length = static_cast<unsigned char>(content[at]);
        isPut = EGifPutExtensionBlock(gif, length, &content[at + 1]) == GIF_OK;
        at += 1 + static_cast<std::size_t>(length);
    }
    return isPut && EGifPutExtensionTrailer(gif) == GIF_OK;
}

bool PutHeader(GifFileType* gif, const PictureInfo& info, std::optional<int> transparent, std::size_t entries,
               const std::string& comment, const std::string& xmp) {
    const auto table = MakeTable(info.palette, entries);
    const int width = static_cast<int>(info.width);
    const int height = static_cast<int>(info.height);
    const bool hasExtensions = transparent || !comment.empty() || !xmp.empty();
    EGifSetGifVersion(gif, hasExtensions);
    return table != nullptr && EGifPutScreenDesc(gif, width, height, BitsOfPrimary, 0, table.get()) == GIF_OK &&
           (comment.empty() || EGifPutComment(gif, comment.c_str()) == GIF_OK) && (xmp.empty() || PutXmp(gif, xmp)) &&
           (!transparent || PutTransparentIndex(gif, *transparent)) &&
           EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) == GIF_OK;
}

// What giflib has written in front of the pixels.
unsigned CodeSizeOf(const GifFileType* gif) {
    return std::max(2u, static_cast<unsigned>(gif->SColorMap->BitsPerPixel));
}

// Empty where there is none.
std::string XmpFor(const PropertyList& properties) {
    const auto packet = XmpOf(properties);
    return packet.empty() ? std::string() : GifContentOf(packet);
}

// What becomes of an index where the fully transparent entries are one.
struct Transparency {
    explicit Transparency(const Palette& palette) {
        for (std::size_t i = 0; i < indexOf.size(); ++i) {
            indexOf[i] = static_cast<std::uint8_t>(i);
            if (i < palette.size() && IsClear(palette[i])) {
                hasSeveral = hasSeveral || index;
                index = index.value_or(static_cast<int>(i));
                indexOf[i] = static_cast<std::uint8_t>(*index);
            }
        }
    }

    void Unite(std::span<std::uint8_t> indices) const {
        if (hasSeveral) {
            std::transform(indices.begin(), indices.end(), indices.begin(), [&](auto i) { return indexOf[i]; });
        }
    }

    std::optional<int> index; // of the first
    bool hasSeveral = false;
    std::array<std::uint8_t, 256> indexOf;
};

// `entries` is more than any index of the picture.
Status WriteIndexed(const PixelSource& picture, std::size_t entries, const PropertyList& properties, OutputFile& file) {
    const Transparency transparency(picture.Info().palette);
    GifOutput output(file);
    GifFileType* const gif = output.Get();
    if (gif == nullptr) {
        return Status::OutOfMemory;
    }
    if (!PutHeader(gif, picture.Info(), transparency.index, entries, std::string(TextCommentOf(properties)),
                   XmpFor(properties))) {
        return output.Failure();
    }
    GifCompressor compressor(CodeSizeOf(gif),
                             [&](const std::uint8_t* block) { return EGifPutCodeNext(gif, block) == GIF_OK; });
    const Status status = ForIndicesOfEachRow(picture, [&](std::span<std::uint8_t> indices) {
        transparency.Unite(indices);
        return compressor.Add(indices) ? Status::Ok : output.Failure();
    });
    if (status != Status::Ok) {
        return status;
    }
    const bool isFinished = compressor.Finish() && EGifPutCodeNext(gif, nullptr) == GIF_OK;
    return isFinished ? output.Close() : output.Failure();
}

} // namespace

Status WriteGif(const PixelSource& picture, const PropertyList& properties, const WriteOptions& /*options*/,
                OutputFile& file) {
    const PictureInfo& info = picture.Info();
    if (IsIndexed(info.format) && std::none_of(info.palette.begin(), info.palette.end(), IsHalfTransparent)) {
        const auto entries = EntriesInUse(picture);
        return entries.Ok() ? WriteIndexed(picture, *entries, properties, file) : entries.GetStatus();
    }
    const auto reduced = ReducedToPalette(picture);
    return reduced.Ok() ? WriteIndexed(**reduced, (*reduced)->Info().palette.size(), properties, file)
                        : reduced.GetStatus();
}

} // namespace imaginglibrary
