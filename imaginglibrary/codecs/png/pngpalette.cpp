// Makes every palette one that a PNG file may have.
#include "imaginglibrary/codecs/png/pngpalette.h"

#include "imaginglibrary/core/packing.h"

#include <algorithm>

namespace imaginglibrary {

PngPalette::PngPalette(const PictureInfo& picture)
    : width_(picture.width), bitsPerPixel_(BitsPerPixel(picture.format)),
      isFull_(picture.palette.size() >= std::size_t{1} << bitsPerPixel_), entries_(picture.palette) {
    if (isFull_) {
        entries_.resize(std::size_t{1} << bitsPerPixel_);
        return;
    }
    constexpr Color Black = MakeColor(0, 0, 0);
    const auto found = std::find(entries_.begin(), entries_.end(), Black);
    black_ = static_cast<unsigned>(found - entries_.begin());
    if (found == entries_.end()) {
        entries_.push_back(Black);
    }
}

void PngPalette::Correct(std::uint8_t* row) const {
    if (isFull_) {
        return;
    }
    for (std::uint32_t x = 0; x < width_; ++x) {
        if (PackedAt(row, x, bitsPerPixel_) >= entries_.size()) {
            PutPacked(row, x, bitsPerPixel_, black_);
        }
    }
}

} // namespace imaginglibrary
