// A GIF file open at the pixels of its first image.
#pragma once

#include "imaginglibrary/codecs/gif/gifpixels.h"
#include "imaginglibrary/core/pixelformat.h"
#include "imaginglibrary/files/inputfile.h"

#include <gif_lib.h>

#include <memory>
#include <optional>
#include <vector>

namespace imaginglibrary {

// What stands before the first image's pixels.
struct GifHeader {
    std::uint32_t screenWidth = 0;
    std::uint32_t screenHeight = 0;
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool isInterlaced = false;
    Palette palette;                // the image's own, else the screen's; all opaque; empty where there is neither
    std::optional<int> transparent; // index, from the control extension before the image
};

// giflib reads the screen. Belongs to one thread at a time.
class GifStream {
  public:
    // UndecodableContent where the file is broken before its first pixel, or has none.
    static Result<std::unique_ptr<GifStream>> Open(const std::shared_ptr<const InputFile>& file);

    const GifHeader& Header() const { return header_; }

    std::uint64_t FileBytes() const { return fileBytes_; }

    // The next line as the file has them, an index per pixel of the image's width. Gives back how many there are: fewer
    // where the data are broken or end before the last pixel; what should stand behind that may be missing.
    std::size_t ReadLine(std::uint8_t* indices) { return pixels_->Read(indices, header_.width); }

    // Why a line was short, and what that means where it must not be.
    GifPixels::End GetEnd() const { return pixels_->GetEnd(); }
    Status WhyNoMore() const { return reader_.WhyNoMore(); }

  private:
    struct Closer {
        void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
    };

    explicit GifStream(const std::shared_ptr<const InputFile>& file) : fileBytes_(file->Size()), reader_(file) {}

    static int ReadBytes(GifFileType* gif, GifByteType* to, int count) noexcept;
    bool ReadHeader();
    bool ReadExtension();
    bool ReadDescriptor();
    void ReadPalette(std::size_t entries);

    std::uint64_t fileBytes_;
    ByteReader reader_;
    GifHeader header_;
    std::unique_ptr<GifFileType, Closer> gif_;
    std::optional<GifPixels> pixels_;
};

} // namespace imaginglibrary
