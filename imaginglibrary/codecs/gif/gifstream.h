// A GIF file open at the pixels of its first image, by way of giflib.
#pragma once

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

// Belongs to one thread at a time.
class GifStream {
  public:
    // Null where the file is broken before its first pixel, or has none.
    static std::unique_ptr<GifStream> Open(const std::shared_ptr<const InputFile>& file);

    const GifHeader& Header() const { return header_; }

    // The next line as the file has them, an index per pixel of the image's width. False if the data is broken or ends
    // before the last pixel; what should stand behind that may be missing.
    bool ReadLine(std::uint8_t* indices);

  private:
    struct Closer {
        void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
    };

    explicit GifStream(const std::shared_ptr<const InputFile>& file) : size_(file->Size()), reader_(file) {}

    static int ReadBytes(GifFileType* gif, GifByteType* to, int count) noexcept;
    std::uint8_t ReadBlockLength();
    bool ReadHeader();
    bool ReadExtension();
    void KeepHeader();

    std::uint64_t size_; // of the file
    ByteReader reader_;
    bool isInPixels_ = false;
    bool isAtBlock_ = true; // among the pixels: whether the length of a block comes next
    GifHeader header_;
    std::unique_ptr<GifFileType, Closer> gif_;
};

} // namespace imaginglibrary
