// Draws an image file on a device context.
#include "imaging/display.h"

#include "imaging/gdiplus/bindings.h"
#include "imaging/images.h"
#include "imaging/session.h"

#include <cstring>

namespace lumbrix {

namespace {

// The bytes of an 8-bit name read as if they were wide text already, ended by zeros.
std::u16string NarrowBytesAsWide(const std::string& name) {
    std::u16string wide(name.size() / sizeof(char16_t) + 1, u'\0');
    std::memcpy(wide.data(), name.data(), name.size());
    return wide;
}

// At its size in pixels, whatever its resolution.
FlatStatus DrawPixelForPixel(ImageHandle image, DeviceContextHandle context) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    GdipGetImageWidth(image, &width);
    GdipGetImageHeight(image, &height);
    GraphicsHandle graphics = nullptr;
    if (const FlatStatus status = GdipCreateFromHDC(context, &graphics); status != 0) {
        return status;
    }
    const FlatStatus status =
        GdipDrawImageRectI(graphics, image, 0, 0, static_cast<std::int32_t>(width), static_cast<std::int32_t>(height));
    GdipDeleteGraphics(graphics);
    return status;
}

} // namespace

StatusValue DisplayImage(const std::string& name, DeviceContextHandle context, float x, float y) {
    GraphicsHandle graphics = nullptr;
    GdipCreateFromHDC(context, &graphics);
    ImageHandle image = nullptr;
    GdipLoadImageFromFile(NarrowBytesAsWide(name).c_str(), &image);
    GdipDrawImage(graphics, image, x, y);
    if (image != nullptr) {
        DisposeImageHandle(image);
    }
    if (graphics != nullptr) {
        GdipDeleteGraphics(graphics);
    }
    return Done;
}

StatusValue DrawImageFile(const std::string& name, DeviceContextHandle context) {
    const ImagingSession session;
    if (session.Status() != Done) {
        return session.Status();
    }
    OwnedImage image;
    const FlatStatus status = LoadImageFile(name, image.Place());
    if (!image) {
        image.LeaveBehind();
        return status;
    }
    return DrawPixelForPixel(image.Get(), context);
}

} // namespace lumbrix
