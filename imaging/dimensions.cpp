// Reads the size of an image file.
#include "imaging/dimensions.h"

#include "imaging/blank.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"

namespace lumbrix {

StatusValue GetImageFileDimensions(const std::string& name, std::int32_t* width, std::int32_t* height) {
    if (IsBlank(name)) {
        return Done;
    }
    SessionToken token = 0;
    if (OpenImagingSession(&token) != 0) {
        return NoSession;
    }
    ImageHandle image = nullptr;
    if (const FlatStatus status = LoadImageFile(name, &image); status != 0) {
        return status;
    }
    if (image != nullptr) {
        GdipGetImageWidth(image, reinterpret_cast<std::uint32_t*>(width));
        GdipGetImageHeight(image, reinterpret_cast<std::uint32_t*>(height));
        DisposeImageHandle(image);
    }
    GdiplusShutdown(token);
    return Done;
}

} // namespace lumbrix
