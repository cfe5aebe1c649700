// Makes every palette one that a PNG file may have.
#include "imaginglibrary/codecs/png/pngpalette.h"

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
    const unsigned pixelsPerByte = 8 / bitsPerPixel_;
    const unsigned mask = (1u << bitsPerPixel_) - 1;
    for (std::uint32_t x = 0; x < width_; ++x) {
        std::uint8_t& byte = row[x / pixelsPerByte];
        const unsigned shift = 8 - bitsPerPixel_ * (x % pixelsPerByte + 1);
        if (((byte >> shift) & mask) >= entries_.size()) {
            byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | (black_ << shift));
        }
    }
}

} // namespace imaginglibrary
