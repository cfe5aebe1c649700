// A GIF file open at the pixels of its first image, by way of giflib.
#include "imaginglibrary/codecs/gif/gifstream.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

Palette PaletteOf(const ColorMapObject* map) {
    Palette palette;
    for (int i = 0; map != nullptr && i < map->ColorCount; ++i) {
        const GifColorType& color = map->Colors[i];
        palette.push_back(MakeColor(color.Red, color.Green, color.Blue));
    }
    return palette;
}

} // namespace

// An exception must not travel through the C library.
int GifStream::ReadBytes(GifFileType* gif, GifByteType* to, int count) noexcept {
    try {
        auto& stream = *static_cast<GifStream*>(gif->UserData);
        if (stream.isInPixels_ && stream.isAtBlock_) {
            *to = stream.ReadBlockLength();
            return 1;
        }
        stream.isAtBlock_ = true;
        return static_cast<int>(stream.reader_.Read(to, static_cast<std::size_t>(count)));
    } catch (...) {
        return 0;
    }
}

// Files that end right behind their last pixel are common. Where a file ends, giflib is given as much of the block as
// there is, and then the end of data; a file that lacks a pixel is found out all the same, for then the end comes too
// early.
std::uint8_t GifStream::ReadBlockLength() {
    const int length = reader_.ReadByte();
    const std::uint64_t left = size_ - std::min(size_, reader_.Position());
    const auto given = static_cast<std::uint8_t>(std::min<std::uint64_t>(left, length < 0 ? 0 : length));
    isAtBlock_ = given == 0;
    return given;
}

std::unique_ptr<GifStream> GifStream::Open(const std::shared_ptr<const InputFile>& file) {
    std::unique_ptr<GifStream> stream(new GifStream(file));
    int error = 0;
    stream->gif_.reset(DGifOpen(stream.get(), &GifStream::ReadBytes, &error));
    if (!stream->gif_ || !stream->ReadHeader()) {
        return nullptr;
    }
    return stream;
}

bool GifStream::ReadHeader() {
    GifRecordType record = UNDEFINED_RECORD_TYPE;
    while (DGifGetRecordType(gif_.get(), &record) == GIF_OK) {
        if (record == IMAGE_DESC_RECORD_TYPE) {
            if (DGifGetImageHeader(gif_.get()) != GIF_OK) {
                return false;
            }
            KeepHeader();
            isInPixels_ = true;
            return header_.width > 0 && header_.height > 0;
        }
        if (record != EXTENSION_RECORD_TYPE || !ReadExtension()) {
            return false;
        }
    }
    return false;
}

bool GifStream::ReadExtension() {
    int code = 0;
    GifByteType* block = nullptr; // its first byte is its length
    if (DGifGetExtension(gif_.get(), &code, &block) != GIF_OK) {
        return false;
    }
    GraphicsControlBlock control;
    if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
        header_.transparent.reset();
        if (control.TransparentColor != NO_TRANSPARENT_COLOR) {
            header_.transparent = control.TransparentColor;
        }
    }
    while (block != nullptr) {
        if (DGifGetExtensionNext(gif_.get(), &block) != GIF_OK) {
            return false;
        }
    }
    return true;
}

void GifStream::KeepHeader() {
    const GifImageDesc& image = gif_->Image;
    header_.screenWidth = static_cast<std::uint32_t>(gif_->SWidth);
    header_.screenHeight = static_cast<std::uint32_t>(gif_->SHeight);
    header_.left = static_cast<std::uint32_t>(image.Left);
    header_.top = static_cast<std::uint32_t>(image.Top);
    header_.width = static_cast<std::uint32_t>(image.Width);
    header_.height = static_cast<std::uint32_t>(image.Height);
    header_.isInterlaced = image.Interlace;
    header_.palette = PaletteOf(image.ColorMap != nullptr ? image.ColorMap : gif_->SColorMap);
}

bool GifStream::ReadLine(std::uint8_t* indices) {
    return DGifGetLine(gif_.get(), indices, static_cast<int>(header_.width)) == GIF_OK;
}

} // namespace imaginglibrary
