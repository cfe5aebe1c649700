// Makes every palette one that a PNG file may have.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstdint>

namespace imaginglibrary {

// A PNG with a pixel beyond its palette's end is invalid, while to us such a pixel is opaque black. So a palette that
// is not full has or gets an entry in that colour, and stray pixels are moved to it.
class PngPalette {
  public:
    // `picture` is indexed.
    explicit PngPalette(const PictureInfo& picture);

    // The picture's own entries and at most one more; never empty.
    const Palette& Entries() const { return entries_; }

    // Moves the stray pixels of one packed row.
    void Correct(std::uint8_t* row) const;

  private:
    std::uint32_t width_;
    unsigned bitsPerPixel_;
    bool isFull_;
    Palette entries_;
    unsigned black_ = 0;
};

} // namespace imaginglibrary
