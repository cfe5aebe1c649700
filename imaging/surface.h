// Drawing surfaces on images, and images that can be drawn on.
#pragma once

#include "imaging/course.h"

namespace lumbrix {

// A surface on an image; once it was asked for it is deleted at its end, a zero one as well, unless it is left behind.
class OwnedSurface {
  public:
    OwnedSurface() = default;
    ~OwnedSurface();
    OwnedSurface(const OwnedSurface&) = delete;
    OwnedSurface& operator=(const OwnedSurface&) = delete;

    GraphicsHandle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

    // Zero where the image gives none.
    FlatStatus Open(ImageHandle image);

    void LeaveBehind() { isOwner_ = false; }

  private:
    GraphicsHandle handle_ = nullptr;
    bool isOwner_ = false;
};

// Whether an image's pixels are indices into a palette, which nothing can be drawn on.
bool IsIndexedFormat(std::int32_t pixelFormat);

// The pixel format to draw on instead: 32 bits with alpha.
inline constexpr std::int32_t TrueColorFormat = 0x0026200A;

// Notes what drawing on a surface answered. As established, a failure is passed over unless it means that the picture
// itself, or what is drawn, could not be decoded: that must not be written as if it were whole, and ends the operation
// as a source that does not load does, with the session left open. False where the operation ends.
bool TakeDrawn(Course& course, Step step, const OwnedSurface& surface, FlatStatus status);

// For an image that has a palette, makes a true-colour copy, properties along; nothing for any other, which can be
// drawn on itself. False where that failed.
bool MakeDrawable(Course& course, const OwnedImage& image, OwnedImage& copy);

} // namespace lumbrix
