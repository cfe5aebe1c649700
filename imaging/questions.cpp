// What callers of the operations may want to know beforehand, and a way round what the operations do not draw on.
#include "imaging/questions.h"

#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/session.h"

namespace lumbrix {

namespace {

constexpr std::int32_t IndexedFlag = 0x00010000;
constexpr std::int32_t Argb32 = 0x0026200A;

// A new bitmap with the image drawn on it.
FlatStatus DrawAsTrueColor(ImageHandle image, ImageHandle* bitmap) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    GdipGetImageWidth(image, &width);
    GdipGetImageHeight(image, &height);
    const auto signedWidth = static_cast<std::int32_t>(width);
    const auto signedHeight = static_cast<std::int32_t>(height);
    if (const FlatStatus status = GdipCreateBitmapFromScan0(signedWidth, signedHeight, 0, Argb32, nullptr, bitmap);
        status != 0) {
        return status;
    }
    GraphicsHandle graphics = nullptr;
    if (const FlatStatus status = GdipGetImageGraphicsContext(*bitmap, &graphics); status != 0) {
        return status;
    }
    const FlatStatus status = GdipDrawImageRectI(graphics, image, 0, 0, signedWidth, signedHeight);
    GdipDeleteGraphics(graphics);
    return status;
}

} // namespace

bool HasFontFamily(const std::string& name) {
    const StatusValue token = StartImagingSession();
    FontFamilyHandle family = nullptr;
    GdipCreateFontFamilyFromName(name, &family);
    const bool isThere = family != nullptr;
    if (isThere) {
        GdipDeleteFontFamily(family);
    }
    EndImagingSession(token);
    return isThere;
}

bool HasIndexedPixels(const std::string& name) {
    const StatusValue token = StartImagingSession();
    ImageHandle image = nullptr;
    std::int32_t format = 0;
    LoadImageFile(name, &image);
    if (image != nullptr) {
        GdipGetImagePixelFormat(image, &format);
        DisposeImageHandle(image);
    }
    EndImagingSession(token);
    return (format & IndexedFlag) != 0;
}

StatusValue CopyAsTrueColor(const std::string& source, const std::string& destination) {
    if (IsBlank(source) || IsBlank(destination)) {
        return Refused;
    }
    const StatusValue token = StartImagingSession();
    ImageHandle image = nullptr;
    StatusValue result = LoadImageFile(source, &image);
    if (image != nullptr) {
        ImageHandle bitmap = nullptr;
        result = DrawAsTrueColor(image, &bitmap);
        if (result == Done) {
            CopyImageProperties(image, bitmap);
            result = SaveImageFileAs(bitmap, destination, "image/png");
        }
        DisposeImageHandle(bitmap);
        DisposeImageHandle(image);
    } else if (result == Done) {
        result = Refused;
    }
    EndImagingSession(token);
    return result;
}

} // namespace lumbrix
