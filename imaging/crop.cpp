// Cuts a rectangle out of an image file.
#include "imaging/crop.h"

#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/session.h"

namespace lumbrix {

namespace {

// Whether a rectangle of this size can lie within the image at all, wherever it may start.
bool FitsInto(ImageHandle image, std::int32_t width, std::int32_t height) {
    std::uint32_t imageHeight = 0;
    std::uint32_t imageWidth = 0;
    GdipGetImageHeight(image, &imageHeight);
    GdipGetImageWidth(image, &imageWidth);
    return static_cast<std::int32_t>(imageWidth) >= width && static_cast<std::int32_t>(imageHeight) >= height;
}

} // namespace

FlatStatus CloneImageArea(ImageHandle image, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                          ImageHandle* clone) {
    std::int32_t format = 0;
    if (const FlatStatus status = GdipGetImagePixelFormat(image, &format); status != 0) {
        return status;
    }
    return GdipCloneBitmapAreaI(x, y, width, height, format, image, clone);
}

StatusValue CropImage(const std::string& source, const std::string& destination, std::int32_t x, std::int32_t y,
                      std::int32_t width, std::int32_t height) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    if (mimeWord.empty() || width <= 0 || height <= 0) {
        return Refused;
    }
    const StatusValue token = StartImagingSession();
    StatusValue result = Refused;
    ImageHandle image = nullptr;
    LoadImageFile(source, &image);
    if (image != nullptr) {
        ImageHandle clone = nullptr;
        if (FitsInto(image, width, height)) {
            result = CloneImageArea(image, x, y, width, height, &clone);
            if (result == Done) {
                CopyImageProperties(image, clone);
                SaveImageFileAs(clone, destination, mimeWord);
            }
        }
        DisposeImageHandle(clone);
        DisposeImageHandle(image);
    }
    EndImagingSession(token);
    return result;
}

} // namespace lumbrix
