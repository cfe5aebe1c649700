// A GIF file open at the pixels of its first image.
#include "imaginglibrary/codecs/gif/gifstream.h"

#include "imaginglibrary/codecs/gif/gifblocks.h"
#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <array>

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
        return static_cast<int>(
            static_cast<GifStream*>(gif->UserData)->reader_.Read(to, static_cast<std::size_t>(count)));
    } catch (...) {
        return 0;
    }
}

Result<std::unique_ptr<GifStream>> GifStream::Open(const std::shared_ptr<const InputFile>& file) {
    std::unique_ptr<GifStream> stream(new GifStream(file));
    int error = 0;
    stream->gif_.reset(DGifOpen(stream.get(), &GifStream::ReadBytes, &error));
    if (!stream->gif_ || !stream->ReadHeader()) {
        return stream->WhyNoMore();
    }
    return stream;
}

bool GifStream::ReadHeader() {
    for (;;) {
        const int mark = reader_.ReadByte();
        if (mark == GifImageMark) {
            return ReadDescriptor();
        }
        if (mark != GifExtensionMark || !ReadExtension()) {
            return false;
        }
    }
}

bool GifStream::ReadExtension() {
    if (reader_.ReadByte() == GRAPHICS_EXT_FUNC_CODE) {
        const std::uint64_t start = reader_.Position();
        std::array<std::uint8_t, GifMostBlockBytes> block;
        const auto length = static_cast<std::size_t>(std::max(reader_.ReadByte(), 0));
        GraphicsControlBlock control;
        if (reader_.Read(block.data(), length) == length &&
            DGifExtensionToGCB(length, block.data(), &control) == GIF_OK) {
            header_.transparent.reset();
            if (control.TransparentColor != NO_TRANSPARENT_COLOR) {
                header_.transparent = control.TransparentColor;
            }
        }
        reader_.Seek(start);
    }
    return PassOverGifBlocks(reader_);
}

bool GifStream::ReadDescriptor() {
    constexpr unsigned IsInterlaced = 0x40;
    std::array<std::uint8_t, GifDescriptorBytes> bytes;
    if (reader_.Read(bytes.data(), bytes.size()) != bytes.size()) {
        return false;
    }
    header_.screenWidth = static_cast<std::uint32_t>(gif_->SWidth);
    header_.screenHeight = static_cast<std::uint32_t>(gif_->SHeight);
    header_.left = LittleEndian16(&bytes[0]);
    header_.top = LittleEndian16(&bytes[2]);
    header_.width = LittleEndian16(&bytes[4]);
    header_.height = LittleEndian16(&bytes[6]);
    const std::uint8_t flags = bytes[8];
    header_.isInterlaced = (flags & IsInterlaced) != 0;
    header_.palette = PaletteOf(gif_->SColorMap);
    if (const std::size_t entries = GifPaletteEntries(flags); entries != 0) {
        ReadPalette(entries);
    }
    const int pixelBits = reader_.ReadByte();
    if (pixelBits < 0 || pixelBits >= static_cast<int>(GifPixels::MostCodeBits)) {
        return false;
    }
    pixels_.emplace(reader_, static_cast<unsigned>(pixelBits));
    return header_.width > 0 && header_.height > 0;
}

// One that is cut off has nothing behind it, which is noticed there.
void GifStream::ReadPalette(std::size_t entries) {
    std::array<std::uint8_t, 3> color;
    header_.palette.clear();
    while (header_.palette.size() < entries && reader_.Read(color.data(), color.size()) == color.size()) {
        header_.palette.push_back(MakeColor(color[0], color[1], color[2]));
    }
}

} // namespace imaginglibrary
