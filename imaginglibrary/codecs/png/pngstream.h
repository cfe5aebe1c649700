// One pass of libpng over a PNG file.
#pragma once

#include "imaginglibrary/codecs/png/pngerrors.h"
#include "imaginglibrary/codecs/png/pngpixels.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace imaginglibrary {

// Told of what stands before the image data.
class PngChunkReader {
  public:
    virtual ~PngChunkReader() = default;

    // One ancillary chunk, whose checksum is right. Must not throw.
    virtual void ReadChunk(std::string_view name, std::span<const std::uint8_t> content) noexcept = 0;
};

// The legal order of calls is Open, Start once, ReadRow up to the picture's height times (for each pass, where there
// are several). Belongs to one thread at a time.
class PngStream {
  public:
    // Reads up to the image data, telling `chunks` of the chunks on the way, but for pHYs and those that pixels need.
    static Result<std::unique_ptr<PngStream>> Open(std::shared_ptr<const InputFile> file,
                                                   PngChunkReader* chunks = nullptr);

    ~PngStream();
    PngStream(const PngStream&) = delete;
    PngStream& operator=(const PngStream&) = delete;

    // What the file says of dots per unit; nothing where there is no such chunk.
    struct DotsPerUnit {
        std::uint32_t horizontal;
        std::uint32_t vertical;
        std::uint8_t unit;
    };
    std::optional<DotsPerUnit> Dots() const;

    // What the header says, in the pixel format that the platform shows such a picture in.
    PictureInfo Info() const;

    // How the pixels lie in the file, before Start.
    PngLayout Layout() const;

    // Where in the file the first chunk of image data begins, before the first row.
    std::uint64_t ImageDataOffset() const;

    // Makes ready to deliver rows in that format. Gives back the number of passes: 1, or 7 for an interlaced file.
    Result<int> Start();

    // The next row of the pass from the top. In a pass behind the first, `row` holds what the earlier ones left there.
    Status ReadRow(std::uint8_t* row);

  private:
    explicit PngStream(std::shared_ptr<const InputFile> file);

    static void ReadBytes(png_structp png, png_bytep to, png_size_t count);
    static int PassChunk(png_structp png, png_unknown_chunkp chunk);
    static void NoteWarning(png_structp png, png_const_charp message);
    void PassOverMetadata(PngChunkReader* chunks);
    bool HasTransparencyChunk() const;
    PixelFormat Format() const;
    Palette ReadPalette() const;

    ByteReader bytes_;
    PngChunkReader* chunks_ = nullptr; // only while Open is under way
    std::size_t chunksPassed_ = 0;     // to it
    bool isChecksumWrong_ = false;     // of the chunk that comes next
    LibraryExit exit_;
    png_structp png_ = nullptr;
    png_infop header_ = nullptr;
};

} // namespace imaginglibrary
