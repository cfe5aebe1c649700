// Turns rows of any pixel format into the true-colour form that an encoder or an operation works on.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstdint>

namespace imaginglibrary {

// Converts single rows of one picture. A target without alpha gets the picture laid over white.
class RowConverter {
  public:
    // `target` is Rgb24, Rgb32 (fourth byte 255), Argb32 or Pargb32; the source may be any format of PixelFormat.
    RowConverter(const PictureInfo& source, PixelFormat target);

    // Both rows hold the source's width in pixels and do not overlap.
    void Convert(const std::uint8_t* from, std::uint8_t* to) const;

  private:
    std::uint32_t width_;
    PixelFormat from_;
    PixelFormat to_;
    Palette palette_; // full length, so that every index has an entry
};

// A reader of the picture's rows converted to `target`; the picture may go before it.
Result<std::unique_ptr<RowReader>> OpenRowsAs(const PixelSource& picture, PixelFormat target);

// The same picture with its rows converted to `target`; it and its readers keep `picture` alive.
std::unique_ptr<PixelSource> ConvertedTo(std::shared_ptr<const PixelSource> picture, PixelFormat target);

// Whether some pixel of the picture may be less than opaque: its format or its palette carries alpha.
bool MayBeTransparent(const PictureInfo& picture);

} // namespace imaginglibrary
