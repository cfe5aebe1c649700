// Draws an image file on a device context.
#include "imaging/display.h"

#include "imaging/gdiplus/bindings.h"
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

} // namespace lumbrix
