// One pass of libpng over a PNG file.
#pragma once

#include "imaginglibrary/codecs/png/pngerrors.h"
#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <cstdint>
#include <memory>

namespace imaginglibrary {

// The legal order of calls is Open, Start once, ReadRow up to the picture's height times (for each pass, where there
// are several). Belongs to one thread at a time.
class PngStream {
  public:
    // Reads up to the image data.
    static Result<std::unique_ptr<PngStream>> Open(std::shared_ptr<const InputFile> file);

    ~PngStream();
    PngStream(const PngStream&) = delete;
    PngStream& operator=(const PngStream&) = delete;

    // What the header says, in the pixel format that the platform shows such a picture in.
    PictureInfo Info() const;

    // Makes ready to deliver rows in that format. Gives back the number of passes: 1, or 7 for an interlaced file.
    Result<int> Start();

    // The next row of the pass from the top. In a pass behind the first, `row` holds what the earlier ones left there.
    Status ReadRow(std::uint8_t* row);

  private:
    explicit PngStream(std::shared_ptr<const InputFile> file);

    static void ReadBytes(png_structp png, png_bytep to, png_size_t count);
    bool HasTransparencyChunk() const;
    PixelFormat Format() const;
    Palette ReadPalette() const;

    ByteReader bytes_;
    LibraryExit exit_;
    png_structp png_ = nullptr;
    png_infop header_ = nullptr;
};

} // namespace imaginglibrary
