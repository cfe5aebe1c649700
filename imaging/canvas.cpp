// A picture that stays loaded and is drawn again and again through three points.
#include "imaging/canvas.h"

#include "imaging/gdiplus/bindings.h"
#include "imaging/images.h"

#include <algorithm>

namespace lumbrix {

PixelSize LoadCanvasImage(const std::string& name, ImageHandle* image) {
    ImageHandle loaded = nullptr;
    if (LoadImageFile(name, &loaded) == 0 && loaded != nullptr) {
        *image = loaded;
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    GdipGetImageWidth(*image, &width);
    GdipGetImageHeight(*image, &height);
    return {static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
}

void DrawCanvasImage(ImageHandle image, const CornerPoints& corners, DeviceContextHandle context) {
    constexpr std::int32_t Bicubic = 4;
    constexpr std::int32_t HighQuality = 2;
    std::array<IntegerPoint, 3> points{};
    std::transform(corners.begin(), corners.end(), points.begin(), [](PixelPoint corner) {
        return IntegerPoint{corner.x, corner.y};
    });
    GraphicsHandle graphics = nullptr;
    GdipCreateFromHDC(context, &graphics);
    GdipSetInterpolationMode(graphics, Bicubic);
    GdipSetSmoothingMode(graphics, HighQuality);
    GdipDrawImagePointsI(graphics, image, points.data(), static_cast<std::int32_t>(points.size()));
    GdipDeleteGraphics(graphics);
}

} // namespace lumbrix
