// Images of the imaging library: loading them from files, and owning them.
#pragma once

#include "imaging/gdiplus/flatstream.h"
#include "platform/text.h"

#include <string>

namespace lumbrix {

// The file stays open and locked while the image lives.
FlatStatus LoadImageFile(const std::string& name, ImageHandle* image, TextEncoding encoding = TextEncoding::CodePage);

// The stream is read, and a reference to it kept, while the image lives.
FlatStatus LoadImageStream(FlatStream* stream, ImageHandle* image);

FlatStatus DisposeImageHandle(ImageHandle image);

// Where a drawing or a save ran out of memory: whether that is because this image's data cannot be decoded.
bool IsUndecodable(ImageHandle image);

// From the moment that a function of the imaging library is given the place for a handle, it disposes of what it holds
// at its end, a zero handle as well, unless that is left behind.
class OwnedImage {
  public:
    OwnedImage() = default;
    ~OwnedImage() {
        if (isOwner_) {
            DisposeImageHandle(handle_);
        }
    }
    OwnedImage(const OwnedImage&) = delete;
    OwnedImage& operator=(const OwnedImage&) = delete;

    ImageHandle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

    // Where a function of the imaging library puts a new handle.
    ImageHandle* Place() {
        isOwner_ = true;
        return &handle_;
    }

    // Nothing is disposed of at the end.
    void LeaveBehind() { isOwner_ = false; }

  private:
    ImageHandle handle_ = nullptr;
    bool isOwner_ = false;
};

} // namespace lumbrix
