// Images of the imaging library: loading them from files, and owning them.
#include "imaging/images.h"

#include "imaging/gdiplus/bindings.h"
#include "imaging/status.h"

namespace lumbrix {

FlatStatus LoadImageFile(const std::string& name, ImageHandle* image, TextEncoding encoding) {
    return GdipLoadImageFromFile(ToWide(name, encoding).c_str(), image);
}

FlatStatus LoadImageStream(FlatStream* stream, ImageHandle* image) { return GdipLoadImageFromStream(stream, image); }

FlatStatus DisposeImageHandle(ImageHandle image) { return GdipDisposeImage(image); }

bool IsUndecodable(ImageHandle image) {
    OwnedImage smallest;
    return GdipGetImageThumbnail(image, 1, 1, smallest.Place()) == OutOfMemory;
}

} // namespace lumbrix
