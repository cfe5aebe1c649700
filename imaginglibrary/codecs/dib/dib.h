// Device-independent bitmaps: the header, palette and pixels that BMP files and icons have in common.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <array>
#include <cstdint>
#include <memory>

namespace imaginglibrary {

enum class DibCompression : std::uint32_t { None = 0, Rle8 = 1, Rle4 = 2, BitFields = 3, AlphaBitFields = 6 };

// A parsed header. All offsets count from the start of the file.
struct Dib {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool topDown = false;
    unsigned bitsPerPixel = 0;
    DibCompression compression = DibCompression::None;
    std::array<std::uint32_t, 4> masks{}; // red, green, blue, alpha; all zero where the layout is the usual one
    Palette palette;
    Resolution resolution;
    std::uint64_t endOfPalette = 0; // where pixels lie unless the file says otherwise
};

// Reads the header at `offset` with its palette: the 12-byte OS/2 one, or any of 16 to 124 bytes. Of a palette that
// runs over the end of the file there are the entries before it.
Result<Dib> ReadDibHeader(const InputFile& file, std::uint64_t offset);

// The picture of a DIB whose pixels begin at `pixels`. Uncompressed and bit-field rows are read from the file when they
// are asked for; formats are those the platform shows: indexed kept, 555 and 565 kept, other 16-bit layouts and 32 bits
// as Rgb32 (an alpha byte is ignored), 24 bits as Rgb24.
Result<std::unique_ptr<Decoder>> OpenDib(std::shared_ptr<const InputFile> file, Dib dib, std::uint64_t pixels);

// Bytes from one stored row to the next: rows are padded to four bytes.
std::uint64_t DibStride(std::uint32_t width, unsigned bitsPerPixel);

} // namespace imaginglibrary
