// A picture in memory that can be drawn on as on a screen, and whose pixels can be read.
#pragma once

#include "base/geometry.h"
#include "toolkit/handles.h"

#include <cstdint>
#include <span>

namespace lumbrix {

// 24 or 32 bits a pixel, blue first, rows of a multiple of four bytes.
class OffscreenPicture {
  public:
    // Which row the memory begins with.
    enum class FirstRow {
        Bottom,
        Top,
    };

    // Black at first. Where it cannot be made it is false.
    OffscreenPicture(PixelSize size, int bitsPerPixel, FirstRow firstRow = FirstRow::Bottom);

    explicit operator bool() const { return static_cast<bool>(bitmap_); }
    HDC Context() const { return context_.Get(); }
    PixelSize Size() const { return size_; }

    // All rows. What was drawn is in it.
    std::span<std::uint8_t> Pixels() const;

  private:
    PixelSize size_;
    std::size_t bytes_ = 0;
    std::uint8_t* pixels_ = nullptr;
    OwnedBitmap bitmap_;
    OwnedContext context_; // goes first, and lets go of the bitmap with it
};

} // namespace lumbrix
