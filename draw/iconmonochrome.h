// A picture of one bit a pixel in memory.
#pragma once

#include "base/geometry.h"
#include "toolkit/handles.h"

namespace lumbrix {

class MonochromePicture {
  public:
    // Where it cannot be made it is false.
    explicit MonochromePicture(PixelSize size);

    explicit operator bool() const { return isSelected_; }
    HDC Context() const { return context_.Get(); }
    HBITMAP Bitmap() const { return bitmap_.Get(); }

  private:
    OwnedBitmap bitmap_;
    OwnedContext context_; // goes first, and lets go of the bitmap with it
    bool isSelected_ = false;
};

} // namespace lumbrix
